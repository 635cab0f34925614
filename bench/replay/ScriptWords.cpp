#include "bench/replay/ScriptWords.h"

namespace Helmsway {
namespace {

constexpr std::string_view Blanks = " \t";

bool IsBlank(char character) { return Blanks.find(character) != std::string_view::npos; }

/// The quoted word at the front of `line`.
ScriptWord QuotedWord(std::string_view line) {
  ScriptWord word;
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (line[i] == '"') {
      word.raw = line.substr(0, i + 1);
      if (i + 1 < line.size() && !IsBlank(line[i + 1])) {
        throw ScriptMistake("a blank is missing behind the closing quote of " + word.raw);
      }
      return word;
    }
    const bool escaped = line[i] == '\\' && i + 1 < line.size() && (line[i + 1] == '"' || line[i + 1] == '\\');
    if (escaped) ++i;
    word.text += line[i];
  }
  throw ScriptMistake("a quoted word has no closing quote: " + std::string(line));
}

}  // namespace

std::vector<ScriptWord> SplitWords(std::string_view line) {
  std::vector<ScriptWord> words;
  for (std::size_t start = line.find_first_not_of(Blanks); start != std::string_view::npos;
       start = line.find_first_not_of(Blanks)) {
    line.remove_prefix(start);
    if (line.front() == '"') {
      words.push_back(QuotedWord(line));
    } else {
      const std::string plain(line.substr(0, line.find_first_of(Blanks)));
      words.push_back({plain, plain});
    }
    line.remove_prefix(words.back().raw.size());
  }
  return words;
}

std::string WrittenWord(std::string_view text) {
  const bool plain = !text.empty() && text.front() != '"' && text.find_first_of(" \t") == std::string_view::npos;
  if (plain) return std::string(text);
  std::string word = "\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') word += '\\';
    word += character;
  }
  return word + '"';
}

std::string JoinRaw(std::span<const ScriptWord> words) {
  std::string text;
  for (const ScriptWord& word : words) {
    if (!text.empty()) text += ' ';
    text += word.raw;
  }
  return text;
}

}  // namespace Helmsway
