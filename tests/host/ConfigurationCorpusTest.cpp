#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "bench/host/ConfigurationFile.h"
#include "bench/host/IniEdits.h"
#include "bench/host/IniFile.h"
#include "tests/host/TemporaryFolder.h"

/// Files of every kind that turns up at a machine, and each kind of write on them: all other bytes stay.
namespace Helmsway {
namespace {

using namespace std::string_literals;

/// In `text` the marks `<` and `>` enclose the value of the key "k" of section "S", and `^` stands where a further key
/// of that section goes. They are no part of the file.
struct Kind {
  const char* name;
  std::string text;
  std::string lineEnd;       ///< of an added line
  std::string missingEnd{};  ///< what a line added at the end of the file needs in front
};

std::vector<Kind> Corpus() {
  return {
      {"LF", "[S]\nj=0\nk=<1>\n^[T]\nk=2\n", "\n"},
      {"CR LF", "[S]\r\nj=0\r\nk=<1>\r\n^[T]\r\nk=2\r\n", "\r\n"},
      {"mixed, CR LF first", "[S]\r\nk=<1>\nj=2\n^[T]\r\n\n", "\r\n"},
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
      {"section duplicated", "[S]\nk=<1>\n^[T]\nk=0\n[S]\nk=2\nj=3\n", "\n"},
      {"section duplicated, only the second has it", "[S]\nj=1\n^[T]\nk=0\n[S]\nk=<2>\n", "\n"},
      {"section duplicated, the first is empty", "[S]\n^; c\n[T]\nk=0\n[S]\nk=<2>\n", "\n"},
      {"other letter case", "[s]\nK=<1>\n^[T]\n", "\n"},
      {"marks in values", "[S]\nj==;#%\\\nk=<=a;b#c%d\\e>\n^[T]\nj=%s;\n", "\n"},
      {"quotes and commas", "[S]\nk=<\"A, B\",1,,\"\">\n^j\n", "\n"},
      {"bytes that aren't UTF-8", "\xFF\xFE\n[S]\nj=\xC3\x28\nk=<\x80\xFF>\n^[\xE9]\n\xE9=\xE9\n", "\n"},
      {"NUL bytes", "[S]\nj\0=\0\nk=<\0a\0>\n^\0\0\n[T]\n"s, "\n"},
      {"empty value", "[S]\nk=<>\nj=\n^[T]\n", "\n"},
      {"lines without an equals sign", "stray\n[S]\nk\nk=<1>\n^stray [S]\n", "\n"},
      {"lines without a name", "[S]\n=0\nk=<1>\n^=\n", "\n"},
      {"head without an end", "[S\nk=<1>\n^[T\nk=2\n", "\n"},
      {"text behind a head", "[S] k=0\nk=<1>\n^[T];\n", "\n"},
  };
}

/// A kind's file, if need be with another value, and with more bytes at the place of a new key.
std::string Filled(const std::string& text, const std::optional<std::string>& value, const std::string& added = "") {
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

/// The bytes after a write, which must have left nothing but the file and can be read again.
std::string AfterWrite(const std::string& bytes, std::string_view section, std::string_view key,
                       std::string_view value) {
  const TemporaryFolder folder;
  EXPECT_TRUE(SetIniValue(folder.Write("Marivane.ini", bytes), section, key, value));
  EXPECT_EQ(folder.Names(), std::set<std::string>{"Marivane.ini"});
  const std::string after = folder.Read("Marivane.ini");
  EXPECT_EQ(IniFile(after).Find(section, key), value);
  return after;
}

TEST(ConfigurationCorpusTest, EachKindOfWriteLeavesAllOtherBytes) {
  for (const auto& [name, text, lineEnd, missingEnd] : Corpus()) {
    SCOPED_TRACE(name);
    const std::string bytes = Filled(text, {});
    const std::string own = text.substr(text.find('<') + 1, text.find('>') - text.find('<') - 1);
    for (const std::string& value : {"7"s, R"("A=;#",12.5,\)"s, ""s, own, std::string(5000, 'z')}) {
      EXPECT_EQ(AfterWrite(bytes, "S", "k", value), Filled(text, value));
    }
    EXPECT_EQ(AfterWrite(bytes, "s", "K", "7"), Filled(text, "7"));

    const std::string ahead = text.ends_with('^') ? missingEnd : "";
    const std::string withKey = AfterWrite(bytes, "S", "New", "a,b");
    EXPECT_EQ(withKey, Filled(text, {}, ahead + "New=a,b" + lineEnd));
    EXPECT_EQ(WithoutKey(withKey, "S", "NEW"), Filled(text, {}, ahead));
    EXPECT_EQ(AfterWrite(bytes, "Other", "New", "a,b"), bytes + missingEnd + "[Other]" + lineEnd + "New=a,b" + lineEnd);
  }
}

TEST(ConfigurationCorpusTest, AddsToFilesWithoutTheUsualShape) {
  const std::array<const char*, 4> rows[] = {
      // what it is, the bytes, the section of the added key, the new bytes
      {"empty file", "", "S", "[S]\r\nk=1\r\n"},
      {"byte order mark alone", "\xEF\xBB\xBF", "S", "\xEF\xBB\xBF[S]\r\nk=1\r\n"},
      {"head alone, no line end", "[S]", "S", "[S]\r\nk=1\r\n"},
      {"ahead of all sections, behind a key", "; c\nj=0\n; c\n[T]\n", "", "; c\nj=0\nk=1\n; c\n[T]\n"},
      {"ahead of all sections, no key there", "\xEF\xBB\xBF[T]\r\n", "", "\xEF\xBB\xBFk=1\r\n[T]\r\n"},
  };
  for (const auto& [name, bytes, section, after] : rows) EXPECT_EQ(AfterWrite(bytes, section, "k", "1"), after) << name;
}

}  // namespace
}  // namespace Helmsway
