#include "bench/host/ConfigurationService.h"

#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "addin/base/Boundary.h"
#include "addin/base/Steps.h"
#include "addin/base/Texts.h"
#include "bench/host/AtomicFile.h"
#include "bench/host/ConfigurationFile.h"

namespace Helmsway {

using HelmswayCmds::Result;
using HelmswayCmds::Text;
using OrvelCalibrateS::AsText;
using OrvelCalibrateS::AsView;
using OrvelCalibrateS::AtBoundary;
using OrvelCalibrateS::Require;

namespace {

/// A path that the system would take for a shorter one names no file.
std::string_view PathOf(Text filePath) {
  const std::string_view path = AsView(filePath);
  Require(path.find('\0') == std::string_view::npos);
  return path;
}

/// All pieces between the separators; none of an empty text. An empty separator separates nothing.
std::vector<Text> Pieces(std::string_view text, std::string_view separator) {
  std::vector<Text> pieces;
  if (text.empty()) return pieces;
  constexpr std::size_t longestItemLine = 32;
  pieces.reserve(longestItemLine);
  std::size_t begin = 0;
  if (!separator.empty()) {
    for (std::size_t end = text.find(separator); end != std::string_view::npos; end = text.find(separator, begin)) {
      pieces.push_back(AsText(text.substr(begin, end - begin)));
      begin = end + separator.size();
    }
  }
  pieces.push_back(AsText(text.substr(begin)));
  return pieces;
}

}  // namespace

Result ConfigurationService::ReadIni(Text section, Text key, Text filePath, Text defaultValue,
                                     HelmswayCmds::ITextTarget& value) noexcept {
  return AtBoundary([&] {
    const IniFile* const file = CurrentFile(PathOf(filePath));
    const std::optional<std::string_view> found =
        file != nullptr ? file->Find(AsView(section), AsView(key)) : std::nullopt;
    Require(value.Assign(found ? AsText(*found) : defaultValue));
  });
}

Result ConfigurationService::WriteIni(Text section, Text key, Text filePath, Text value) noexcept {
  return AtBoundary([&] {
    const std::string path(PathOf(filePath));
    Require(SetIniValue(path, AsView(section), AsView(key), AsView(value), durability_));
  });
}

Result ConfigurationService::SplitText(HelmswayCmds::ITextListTarget& parts, Text separator, Text text,
                                       std::int32_t* count) noexcept {
  if (count == nullptr) return Result::InvalidPointer;
  return AtBoundary([&] {
    const std::vector<Text> pieces = Pieces(AsView(text), AsView(separator));
    Require(pieces.size() <= static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()));
    Require(parts.Assign(pieces.data(), pieces.size()));
    const bool endsInSeparator = !pieces.empty() && pieces.back().size == 0;
    *count = static_cast<std::int32_t>(pieces.size()) - (endsInSeparator ? 1 : 0);
  });
}

const IniFile* ConfigurationService::CurrentFile(std::string_view path) {
  // Reads come in rows from one file.
  if (last_ == nullptr || last_->first != path) {
    const auto kept = kept_.find(path);
    if (kept == kept_.end()) return Load(std::string(path), nullptr);
    last_ = &*kept;
  }

  const auto& [name, kept] = *last_;
  FileStamp stamp;
  const bool isSame = ReadStamp(name, stamp) == FilePresence::Present && kept.stampSettled && stamp == kept.stamp;
  return isSame ? &kept.file : Load(name, last_);
}

const IniFile* ConfigurationService::Load(const std::string& path, KeptFiles::value_type* kept) {
  FileContents contents;
  const FilePresence presence = ReadWholeFile(path, contents);
  if (presence != FilePresence::Present) {
    last_ = nullptr;
    if (kept != nullptr) kept_.erase(kept_.find(path));
    Require(presence == FilePresence::Missing);
    return nullptr;
  }
  const bool isParsed = kept != nullptr && kept->second.file.Bytes() == contents.bytes;
  if (!isParsed) {
    IniFile file(std::move(contents.bytes));
    if (kept == nullptr) kept = &*kept_.try_emplace(path).first;
    kept->second.file = std::move(file);
  }
  kept->second.stamp = contents.stamp;
  kept->second.stampSettled = contents.stampSettled;
  last_ = kept;
  return &kept->second.file;
}

}  // namespace Helmsway
