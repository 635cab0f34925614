#include "bench/host/ConfigurationService.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "addin/base/Boundary.h"
#include "addin/base/Steps.h"
#include "addin/base/Texts.h"
#include "bench/host/AtomicFile.h"
#include "bench/host/ConfigurationFile.h"
#include "bench/host/WriteObstacle.h"

namespace Helmsway {

using HelmswayCmds::Result;
using HelmswayCmds::Text;
using OrvelCalibrateS::AsText;
using OrvelCalibrateS::AsView;
using OrvelCalibrateS::AtBoundary;
using OrvelCalibrateS::Require;
using OrvelCalibrateS::StepFailed;

namespace {

/// No line of a configuration and no command text has nearly as many. Each takes tens of bytes on either side of the
/// contract, so a damaged file of separators alone would take many times its size.
constexpr std::size_t MostPieces = 1'000'000;

/// All pieces between the separators; none of an empty text. An empty separator separates nothing. Fails beyond
/// `MostPieces`.
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
      Require(pieces.size() < MostPieces);
    }
  }
  pieces.push_back(AsText(text.substr(begin)));
  return pieces;
}

}  // namespace

template <class Operation>
Result ConfigurationService::AtFile(std::string_view path, Operation operation) noexcept {
  const Result result = AtBoundary([&] {
    lastProblem_ = {};
    // The system would take such a path for a shorter one.
    if (path.find('\0') != std::string_view::npos) lastProblem_ = BadTextProblem("the path has a NUL in it");
    Require(!lastProblem_);
    operation(path);
  });
  if (result != Result::Ok && !lastProblem_) {
    // What failed without a word: the caller's own target, or a lack of memory.
    const Result named = AtBoundary([&] { lastProblem_ = {FileProblem::Kind::System, "out of memory"}; });
    static_cast<void>(named);
  }
  return result;
}

Result ConfigurationService::ReadIni(Text section, Text key, Text filePath, Text defaultValue,
                                     HelmswayCmds::ITextTarget& value) noexcept {
  return AtFile(AsView(filePath), [&](std::string_view path) {
    const IniFile* const file = CurrentFile(path);
    const std::optional<std::string_view> found =
        file != nullptr ? file->Find(AsView(section), AsView(key)) : std::nullopt;
    Require(value.Assign(found ? AsText(*found) : defaultValue));
  });
}

Result ConfigurationService::WriteIni(Text section, Text key, Text filePath, Text value) noexcept {
  return AtFile(AsView(filePath), [&](std::string_view path) {
    Forget(path);
    WriteTerms terms{durability_, patience_, isGivenUp_};
    // A save of many values waits for a program that doesn't let go once, and not for each value.
    if (wasBusy_) terms.patience = std::min(patience_, std::chrono::milliseconds(250));
    lastProblem_ = SetIniValue(std::string(path), AsView(section), AsView(key), AsView(value), terms);
    wasBusy_ = lastProblem_.kind == FileProblem::Kind::Busy;
    Require(!lastProblem_);
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

void ConfigurationService::Forget(std::string_view path) {
  last_ = nullptr;
  const auto kept = kept_.find(path);
  if (kept != kept_.end()) kept_.erase(kept);
}

const IniFile* ConfigurationService::Load(const std::string& path, KeptFiles::value_type* kept) {
  if (opened_.insert(path).second) UndoInterruptedWrites(path, durability_);
  FileContents contents;
  const FilePresence presence = ReadWholeFile(path, contents);
  if (presence != FilePresence::Present) {
    last_ = nullptr;
    if (kept != nullptr) kept_.erase(kept_.find(path));
    if (presence == FilePresence::Missing) return nullptr;
    lastProblem_ = ReadObstacle(path);
    if (!lastProblem_) lastProblem_ = {FileProblem::Kind::System, "the file can't be read"};
    throw StepFailed{};
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
