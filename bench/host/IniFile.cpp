#include "bench/host/IniFile.h"

#include <bit>
#include <limits>
#include <stdexcept>
#include <utility>

#include "bench/host/FoldedCase.h"
#include "bench/host/IniLines.h"

namespace Helmsway {
namespace {

constexpr std::uint64_t EmptyHash = 0xcbf29ce484222325;

/// FNV-1a of the folded text, carried on from `hash`. A byte that ends no text keeps "ab"+"c" apart from "a"+"bc".
std::uint64_t Hashed(std::string_view text, std::uint64_t hash) noexcept {
  constexpr std::uint64_t prime = 0x100000001b3;
  for (const char letter : text) hash = (hash ^ static_cast<unsigned char>(FoldedCase(letter))) * prime;
  return (hash ^ 0xff) * prime;
}

/// The upper half has seen more of the multiplications than the lower one.
std::uint32_t Shortened(std::uint64_t hash) noexcept { return static_cast<std::uint32_t>(hash ^ (hash >> 32)); }

}  // namespace

IniFile::IniFile(std::string bytes) : bytes_(std::move(bytes)) {
  CollectEntries();
  LinkEntries();
}

void IniFile::CollectEntries() {
  entries_.emplace_back();  // the section ahead of the first head
  IniLines lines(bytes_);
  for (IniLine line; lines.Next(line);) {
    if (line.kind == IniLine::Kind::SectionHead) entries_.push_back({RangeOf(line.name), {}, {}});
    if (line.kind == IniLine::Kind::Key) entries_.push_back({{}, RangeOf(line.name), RangeOf(line.value)});
  }
  if (entries_.size() >= std::numeric_limits<std::uint32_t>::max()) throw std::length_error("too many keys");
}

void IniFile::LinkEntries() {
  slots_.resize(std::bit_ceil(entries_.size() * 2));
  Range section;
  std::uint64_t sectionHash = EmptyHash;
  for (std::uint32_t number = 1; number <= entries_.size(); ++number) {
    Entry& entry = Numbered(number);
    if (entry.key.size == 0) {
      sectionHash = Hashed(TextOf(entry.section), EmptyHash);
      section = Numbered(Link(number, Hashed({}, sectionHash))).section;
    } else {
      // The keys of all sections of one name share the place of its first head, so that comparing them costs nothing
      // however long the name is.
      entry.section = section;
      Link(number, Hashed(TextOf(entry.key), sectionHash));
    }
  }
}

std::uint32_t IniFile::Link(std::uint32_t number, std::uint64_t hash) {
  const Entry& added = Numbered(number);
  const std::uint32_t wanted = Shortened(hash);
  for (std::size_t place = wanted;; ++place) {
    Slot& slot = slots_[place & (slots_.size() - 1)];
    if (slot.number == 0) {
      slot = {wanted, number};
      return number;
    }
    if (slot.hash != wanted) continue;
    const Entry& present = Numbered(slot.number);
    if (!EqualFolded(TextOf(present.key), TextOf(added.key))) continue;
    const bool sameSection = added.key.size == 0 ? EqualFolded(TextOf(present.section), TextOf(added.section))
                                                 : present.section.begin == added.section.begin;
    if (sameSection) return slot.number;
  }
}

std::optional<std::string_view> IniFile::Find(std::string_view section, std::string_view key) const noexcept {
  if (key.empty() || slots_.empty()) return std::nullopt;
  const std::uint32_t wanted = Shortened(Hashed(key, Hashed(section, EmptyHash)));
  for (std::size_t place = wanted;; ++place) {
    const Slot& slot = slots_[place & (slots_.size() - 1)];
    if (slot.number == 0) return std::nullopt;
    if (slot.hash != wanted) continue;
    const Entry& entry = entries_[slot.number - 1];
    if (EqualFolded(TextOf(entry.key), key) && EqualFolded(TextOf(entry.section), section)) return TextOf(entry.value);
  }
}

IniFile::Range IniFile::RangeOf(std::string_view part) const noexcept {
  return {static_cast<std::size_t>(part.data() - bytes_.data()), part.size()};
}

}  // namespace Helmsway
