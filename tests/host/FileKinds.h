#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Helmsway {

/// A configuration file of a kind that turns up at a machine.
///
/// In `text` the marks `<` and `>` enclose the value of the key "k" of section "S", and `^` stands where a further key
/// of that section goes. They are no part of the file.
struct FileKind {
  const char* name;
  std::string text;
  std::string lineEnd;       ///< of an added line
  std::string missingEnd{};  ///< what a line added at the end of the file needs in front
};

inline std::vector<FileKind> FileKinds() {
  using namespace std::string_literals;
  return {
      {"LF", "[S]\nj=0\nk=<1>\n^[T]\nk=2\n", "\n"},
      {"CR LF", "[S]\r\nj=0\r\nk=<1>\r\n^[T]\r\nk=2\r\n", "\r\n"},
      {"mixed, CR LF first", "[S]\r\nk=<1>\nj=2\n^[T]\r\n\n", "\r\n"},
      {"mixed, LF first", "\n[S]\r\nk=<1>\r\nj=2\r\n^[T]\n", "\n"},
      {"byte order mark", "\xEF\xBB\xBF[S]\r\nk=<1>\r\n^", "\r\n"},
      {"no last line end", "[S]\nk=<1>^", "\n", "\n"},
      {"no last line end, CR LF", "[S]\r\nj=1\r\nk=<1>^", "\r\n", "\r\n"},
      {"last line ends in CR alone", "[S]\nk=<1>\n^[T]\nk=2\r", "\n", "\r\n"},
      {"semicolon comments", "; k=0\n[S]\n;k=0\n ; k=0\nk=<1>\n^;k=0\n[T]\n", "\n"},
      {"hash comments", "#k=0\n[S]\n\t#k=0\nk=<1>\n^#k=0\n# end\n", "\n"},
      {"blank lines", "\r\n\r\n[S]\r\n\r\nk=<1>\r\n^\r\n \t\r\n[T]\r\n\r\n", "\r\n"},
      {"odd spacing", " \t[ S\t] \n\t k \t=\t <1> \t\n^ [T]\n", "\n"},
      {"keys before any section", "k=0\nj=0\n[S]\nk=<1>\n^", "\n"},
      {"written key duplicated", "[S]\nk=<1>\nk=2\nk=3\n^[T]\n", "\n"},
      {"written key duplicated in another letter case", "[S]\nK=<1>\nk=2\n^[T]\nk=3\n[s]\nk=4\n", "\n"},
      {"section duplicated", "[S]\nk=<1>\n^[T]\nk=0\n[S]\nk=2\nj=3\n", "\n"},
      {"section duplicated, only the second has it", "[S]\nj=1\n^[T]\nk=0\n[S]\nk=<2>\n", "\n"},
      {"section duplicated, the first is empty", "[S]\n^; c\n[T]\nk=0\n[S]\nk=<2>\n", "\n"},
      {"other letter case", "[s]\nK=<1>\n^[T]\n", "\n"},
      {"marks in values", "[S]\nj==;#%\\\nk=<=a;b#c%d\\e>\n^[T]\nj=%s;\n", "\n"},
      {"quotes and commas", "[S]\nk=<\"A, B\",1,,\"\">\n^j\n", "\n"},
      {"bytes that aren't UTF-8", "\xFF\xFC\n[S]\nj=\xC3\x28\nk=<\x80\xFF>\n^[\xE9]\n\xE9=\xE9\n", "\n"},
      {"NUL bytes", "[S]\nj\0=\0\nk=<\0a\0>\n^\0\0\n[T]\n"s, "\n"},
      {"empty value", "[S]\nk=<>\nj=\n^[T]\n", "\n"},
      {"value of 250 characters", "[S]\r\nj=0\r\nk=<" + std::string(250, 'v') + ">\r\n^[T]\r\n", "\r\n"},
      {"value of 3,000 characters", "[S]\nk=<" + std::string(3000, 'v') + ">\nj=" + std::string(3000, 'w') + "\n^",
       "\n"},
      {"lines without an equals sign", "stray\n[S]\nk\nk=<1>\n^stray [S]\n", "\n"},
      {"lines without a name", "[S]\n=0\nk=<1>\n^=\n", "\n"},
      {"head without an end", "[S\nk=<1>\n^[T\nk=2\n", "\n"},
      {"text behind a head", "[S] k=0\nk=<1>\n^[T];\n", "\n"},
  };
}

/// A kind's file, if need be with another value, and with more bytes at the place of a new key.
inline std::string Filled(const std::string& text, const std::optional<std::string>& value,
                          const std::string& added = "") {
  std::string bytes;
  bool skipped = false;
  for (const char letter : text) {
    if (letter == '<') bytes += value.value_or("");
    if (letter == '^') bytes += added;
    if (letter == '<' || letter == '>') skipped = letter == '<' && value;
    if (!skipped && letter != '<' && letter != '>' && letter != '^') bytes += letter;
  }
  return bytes;
}

}  // namespace Helmsway
