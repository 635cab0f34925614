#include "bench/host/IniEdits.h"

#include <cstddef>
#include <initializer_list>

#include "bench/host/FoldedCase.h"
#include "bench/host/IniLines.h"
#include "bench/host/Utf16.h"

namespace Helmsway {
namespace {

constexpr std::string_view LineEndBytes = "\r\n";

bool HasAnyOf(std::string_view text, std::string_view bytes) {
  return text.find_first_of(bytes) != std::string_view::npos;
}

bool CanStandInHead(std::string_view section) {
  return !HasAnyOf(section, "]\r\n") && WithoutBlanks(section).size() == section.size();
}

bool CanStandAsKey(std::string_view key) {
  if (key.empty() || HasAnyOf(key, "=\r\n") || WithoutBlanks(key).size() != key.size()) return false;
  return !HasAnyOf(key.substr(0, 1), ";#[") && !key.starts_with(ByteOrderMark);
}

/// Where a key stands, or where it would be added.
struct Place {
  std::optional<std::string_view> value;  ///< of the key that is there
  std::optional<std::size_t> newLine;     ///< offset for an added line; empty when there is no such section
};

Place FindPlace(std::string_view bytes, std::string_view section, std::string_view key) {
  Place place;
  bool inSection = section.empty();
  bool inFirstOfName = inSection;
  if (inSection) place.newLine = bytes.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0;

  IniLines lines(bytes);
  for (IniLine line; lines.Next(line);) {
    if (line.kind == IniLine::Kind::SectionHead) {
      inSection = EqualFolded(line.name, section);
      inFirstOfName = inSection && !place.newLine;
    }
    if (!inSection || line.kind == IniLine::Kind::SaysNothing) continue;
    if (inFirstOfName) place.newLine = line.next;
    if (line.kind != IniLine::Kind::Key || !EqualFolded(line.name, key)) continue;
    place.value = line.value;
    return place;
  }
  return place;
}

std::string_view LineEndOf(std::string_view bytes) {
  const std::size_t lineFeed = bytes.find('\n');
  const bool isLineFeedAlone = lineFeed == 0 || (lineFeed != std::string_view::npos && bytes[lineFeed - 1] != '\r');
  return isLineFeedAlone ? "\n" : "\r\n";
}

/// What completes the line in front of an added one. A CR at the very end is part of its line's text; only CR LF ends
/// the line without taking that CR in.
std::string_view MissingLineEnd(std::string_view ahead, std::string_view lineEnd) {
  if (ahead.empty() || ahead == ByteOrderMark || ahead.ends_with('\n')) return "";
  return ahead.ends_with('\r') ? LineEndBytes : lineEnd;
}

std::string Joined(std::initializer_list<std::string_view> parts) {
  std::size_t size = 0;
  for (const std::string_view part : parts) size += part.size();
  std::string joined;
  joined.reserve(size);
  for (const std::string_view part : parts) joined += part;
  return joined;
}

/// Nothing for an edit that gives a file another encoding in the eyes of its next reader.
std::optional<std::string> UnlessUtf16(std::string bytes) {
  if (IsUtf16(bytes)) return std::nullopt;
  return bytes;
}

/// Whether a reader would take the beginning of these bytes for something else than the text of a line.
bool BeginsWithAMark(std::string_view bytes) { return bytes.starts_with(ByteOrderMark) || IsUtf16(bytes); }

}  // namespace

std::optional<std::string> WithValue(std::string_view bytes, std::string_view section, std::string_view key,
                                     std::string_view value) {
  if (IsUtf16(bytes)) return std::nullopt;
  if (!CanStandInHead(section) || !CanStandAsKey(key) || HasAnyOf(value, LineEndBytes)) return std::nullopt;
  value = WithoutBlanks(value);

  const Place place = FindPlace(bytes, section, key);
  if (place.value) {
    const auto begin = static_cast<std::size_t>(place.value->data() - bytes.data());
    return UnlessUtf16(Joined({bytes.substr(0, begin), value, bytes.substr(begin + place.value->size())}));
  }

  const std::string_view lineEnd = LineEndOf(bytes);
  const std::string_view ahead = bytes.substr(0, place.newLine.value_or(bytes.size()));
  const std::string_view behind = bytes.substr(ahead.size());
  const std::string_view missingEnd = MissingLineEnd(ahead, lineEnd);
  if (place.newLine) return UnlessUtf16(Joined({ahead, missingEnd, key, "=", value, lineEnd, behind}));
  return UnlessUtf16(Joined({ahead, missingEnd, "[", section, "]", lineEnd, key, "=", value, lineEnd, behind}));
}

std::string WithoutKey(std::string_view bytes, std::string_view section, std::string_view key) {
  if (IsUtf16(bytes)) return std::string(bytes);
  std::string left;
  left.reserve(bytes.size());
  std::size_t copied = 0;
  bool inSection = section.empty();
  IniLines lines(bytes);
  for (IniLine line; lines.Next(line);) {
    if (line.kind == IniLine::Kind::SectionHead) inSection = EqualFolded(line.name, section);
    if (line.kind != IniLine::Kind::Key || !inSection || !EqualFolded(line.name, key)) continue;
    left += bytes.substr(copied, line.begin - copied);
    copied = line.next;
  }
  left += bytes.substr(copied);
  // These bytes began a line that was not the first, and were part of its text.
  while (BeginsWithAMark(left) && !bytes.starts_with(ByteOrderMark)) left.insert(0, LineEndOf(bytes));
  return left;
}

}  // namespace Helmsway
