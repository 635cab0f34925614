#include "bench/host/IniFile.h"

#include <bit>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>

#include "bench/host/FoldedCase.h"
#include "bench/host/IniLines.h"
#include "bench/host/Utf16.h"

namespace Helmsway {
namespace {

constexpr std::uint64_t EmptyHash = 0xcbf29ce484222325;

/// Eight of one byte.
constexpr std::uint64_t EightOf(unsigned char byte) noexcept { return std::uint64_t{0x0101010101010101} * byte; }

/// `FoldedCase` of eight letters at once. Below its highest bit, a byte can be added to without touching its neighbour.
constexpr std::uint64_t EightFolded(std::uint64_t letters) noexcept {
  constexpr unsigned char highest = 0x80;
  const std::uint64_t rest = letters & ~EightOf(highest);
  const std::uint64_t fromCapitalA = rest + EightOf(highest - 'A');
  const std::uint64_t behindCapitalZ = rest + EightOf(highest - 'Z' - 1);
  const std::uint64_t capitals = fromCapitalA & ~behindCapitalZ & ~letters & EightOf(highest);
  static_assert(highest >> 2 == 'a' - 'A');
  return letters | capitals >> 2;
}

std::uint64_t EightLetters(const char* from) noexcept {
  std::uint64_t letters = 0;
  std::memcpy(&letters, from, sizeof letters);
  return letters;
}

std::uint64_t UpToEightLetters(std::string_view text) noexcept {
  std::uint64_t letters = 0;
  for (const char letter : text) letters = letters << 8 | static_cast<unsigned char>(letter);
  return letters;
}

/// Both halves of a product: the lower bits of the one have seen all that the upper bits of the other have.
constexpr std::uint64_t Mixed(std::uint64_t hash) noexcept {
  __extension__ using Product = unsigned __int128;
  const Product product = Product{hash} * 0x9e3779b97f4a7c15;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

/// Hash of the text in any letter case, carried on from `hash`. The size keeps "ab"+"c" apart from "a"+"bc".
std::uint64_t Hashed(std::string_view text, std::uint64_t hash) noexcept {
  constexpr std::size_t step = sizeof(std::uint64_t);
  hash = Mixed(hash ^ text.size());
  while (text.size() >= step) {
    hash = Mixed(hash ^ EightFolded(EightLetters(text.data())));
    text.remove_prefix(step);
  }
  return text.empty() ? hash : Mixed(hash ^ EightFolded(UpToEightLetters(text)));
}

/// Names are nearly always asked for in the letters that the file has.
bool EqualNames(std::string_view left, std::string_view right) noexcept {
  return left == right || EqualFolded(left, right);
}

std::uint32_t Shortened(std::uint64_t hash) noexcept { return static_cast<std::uint32_t>(hash ^ (hash >> 32)); }

}  // namespace

IniFile::IniFile(std::string bytes) : bytes_(std::move(bytes)) {
  CollectEntries();
  LinkEntries();
}

void IniFile::CollectEntries() {
  if (bytes_.size() > std::numeric_limits<std::uint32_t>::max()) throw std::length_error("too large a file");
  // Lines are longer than this as a rule, and room that isn't used costs nothing.
  constexpr std::size_t shortLine = 16;
  entries_.reserve(bytes_.size() / shortLine + 2);
  entries_.emplace_back();  // the section ahead of the first head
  if (IsUtf16(bytes_)) return;
  IniLines lines(bytes_);
  for (IniLine line; lines.Next(line);) {
    if (line.kind == IniLine::Kind::SectionHead) entries_.push_back({RangeOf(line.name), {}, {}});
    if (line.kind == IniLine::Kind::Key) entries_.push_back({{}, RangeOf(line.name), RangeOf(line.value)});
  }
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
    if (!EqualNames(TextOf(present.key), TextOf(added.key))) continue;
    const bool sameSection = added.key.size == 0 ? EqualNames(TextOf(present.section), TextOf(added.section))
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
    if (EqualNames(TextOf(entry.key), key) && EqualNames(TextOf(entry.section), section)) return TextOf(entry.value);
  }
}

IniFile::Range IniFile::RangeOf(std::string_view part) const noexcept {
  return {static_cast<std::uint32_t>(part.data() - bytes_.data()), static_cast<std::uint32_t>(part.size())};
}

}  // namespace Helmsway
