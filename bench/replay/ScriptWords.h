#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Helmsway {

/// A line of a script, or its place among the words of one, that says nothing a script can say.
class ScriptMistake : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A word of a script's line.
struct ScriptWord {
  std::string text;  ///< what it says
  std::string raw;   ///< as it is written, quotes included
};

/// The words of a line, which blanks and tabs separate. A word that begins with a quote goes on to its closing quote.
/// Throws `ScriptMistake` when that is missing, or something other than a blank stands right behind it.
std::vector<ScriptWord> SplitWords(std::string_view line);

/// How a script writes a word that says `text`: between quotes where it needs them.
std::string WrittenWord(std::string_view text);

/// The words as they are written, with single blanks between them.
std::string JoinRaw(std::span<const ScriptWord> words);

}  // namespace Helmsway
