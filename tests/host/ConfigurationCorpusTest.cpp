#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "addin/base/Ref.h"
#include "addin/base/Texts.h"
#include "bench/host/ConfigurationFile.h"
#include "bench/host/ConfigurationService.h"
#include "tests/host/TemporaryFolder.h"

/// Files of every kind that turns up at a machine, and each kind of write on them: all other bytes stay.
namespace Helmsway {
namespace {

using namespace std::string_literals;
using OrvelCalibrateS::AsText;

/// In `text` the marks `<` and `>` enclose the value of the key "k" of section "S", and `^` stands where a further key
/// of that section goes. They are no part of the file.
struct Kind {
  const char* name;
  std::string text;
  std::string lineEnd;       ///< of an added line
  std::string missingEnd{};  ///< what a line added at the end of the file needs in front
};

std::vector<Kind> Corpus() {
  const std::string longValue(250, 'x');
  const std::string veryLongValue(3000, 'y');
  return {
      {"LF", "[S]\nj=0\nk=<1>\n^[T]\nk=2\n", "\n"},
      {"CR LF", "[S]\r\nj=0\r\nk=<1>\r\n^[T]\r\nk=2\r\n", "\r\n"},
      {"mixed, CR LF first", "[S]\r\nk=<1>\nj=2\n^[T]\r\n\n", "\r\n"},
      {"mixed, LF first", "\n[S]\r\nk=<1>\r\nj=2\r\n^[T]\r\n", "\n"},
      {"byte order mark", "\xEF\xBB\xBF[S]\r\nk=<1>\r\n^", "\r\n"},
      {"byte order mark and a comment", "\xEF\xBB\xBF; c\n[S]\nk=<1>\n^", "\n"},
      {"no last line end", "[S]\nk=<1>^", "\n", "\n"},
      {"no last line end, CR LF", "[S]\r\nj=1\r\nk=<1>^", "\r\n", "\r\n"},
      {"no last line end, blanks behind the value", "[S]\nk=<1>\t ^", "\n", "\n"},
      {"no last line end, in a later section", "[S]\nk=<1>\n^[T]\nk=2", "\n", "\n"},
      {"last line ends in CR alone", "[S]\nk=<1>\n^[T]\nk=2\r", "\n", "\r\n"},
      {"semicolon comments", "; k=0\n[S]\n;k=0\n ; k=0\nk=<1>\n^; end\n[T]\n", "\n"},
      {"hash comments", "#k=0\n[S]\n\t#k=0\nk=<1>\n^# end\n# end\n", "\n"},
      {"blank lines", "\r\n\r\n[S]\r\n\r\nk=<1>\r\n^\r\n \t\r\n[T]\r\n\r\n", "\r\n"},
      {"odd spacing", " \t[ S\t] \n\t k \t=\t <1> \t\n^ [T]\n", "\n"},
      {"keys before any section", "k=0\nj=0\n[S]\nk=<1>\n^", "\n"},
      {"written key duplicated", "[S]\nk=<1>\nk=2\nk=3\n^[T]\n", "\n"},
      {"other keys duplicated", "[S]\nj=1\nj=2\nk=<1>\nj=3\n^", "\n"},
      {"section duplicated", "[S]\nk=<1>\n^[T]\nk=0\n[S]\nk=2\nj=3\n", "\n"},
      {"section duplicated, only the second has it", "[S]\nj=1\n^[T]\nk=0\n[S]\nk=<2>\n", "\n"},
      {"section duplicated, the first is empty", "[S]\n^; c\n[T]\nk=0\n[S]\nk=<2>\n", "\n"},
      {"other letter case", "[s]\nK=<1>\n^[T]\n", "\n"},
      {"marks in values", "[S]\nj==;#%\\\nk=<=a;b#c%d\\e>\n^[T]\nj=%s;\n", "\n"},
      {"quotes and commas", "[S]\nk=<\"A, B\",1,,\"\">\n^j\n", "\n"},
      {"bytes that aren't UTF-8", "\xFF\xFE\n[S]\nj=\xC3\x28\nk=<\x80\xFF>\n^[\xE9]\n\xE9=\xE9\n", "\n"},
      {"NUL bytes", "[S]\nj\0=\0\nk=<\0a\0>\n^\0\0\n[T]\n"s, "\n"},
      {"empty value", "[S]\nk=<>\nj=\n^[T]\n", "\n"},
      {"empty value behind a blank", "[S]\r\nk = <>\r\n^", "\r\n"},
      {"empty value without a line end", "[S]\nk=<>^", "\n", "\n"},
      {"value of 250 characters", "[S]\nk=<" + longValue + ">\nj=" + longValue + "\n^", "\n"},
      {"value of 3000 characters", "[S]\nj=" + veryLongValue + "\nk=<" + veryLongValue + ">\n^", "\n"},
      {"lines without an equals sign", "stray\n[S]\nk\nk=<1>\n^stray [S]\n", "\n"},
      {"lines without a name", "[S]\n=0\nk=<1>\n^=\n", "\n"},
      {"head without an end", "[S\nk=<1>\n^[T\nk=2\n", "\n"},
      {"text behind a head", "[S] k=0\nk=<1>\n^[T];\n", "\n"},
      {"CR inside a line", "[S]\nj=a\rk=b\nk=<1>\n^;\rk=c\n", "\n"},
  };
}

struct Parts {
  std::string ahead;
  std::string value;
  std::string behind;
  std::string aheadOfNewKey;
  std::string behindNewKey;
};

std::string WithoutMarks(std::string_view text) {
  std::string bytes;
  for (const char letter : text) {
    if (letter != '<' && letter != '>' && letter != '^') bytes += letter;
  }
  return bytes;
}

Parts TakenApart(const Kind& kind) {
  const std::string_view text = kind.text;
  const std::size_t begin = text.find('<');
  const std::size_t end = text.find('>');
  const std::size_t place = text.find('^');
  return {WithoutMarks(text.substr(0, begin)), std::string(text.substr(begin + 1, end - begin - 1)),
          WithoutMarks(text.substr(end)), WithoutMarks(text.substr(0, place)), WithoutMarks(text.substr(place))};
}

class ConfigurationCorpusTest : public testing::Test {
 protected:
  /// Runs `write` on a file of those bytes and gives the new ones; nothing but the file may be in the folder then.
  template <class Write>
  std::string After(const std::string& bytes, Write write) {
    const std::string path = folder_.Write("Marivane.ini", bytes);
    EXPECT_TRUE(write(path));
    EXPECT_EQ(folder_.Names(), std::set<std::string>{"Marivane.ini"});
    return folder_.Read("Marivane.ini");
  }

  /// Writes through the contract, checks what a read gives then, and gives the new bytes.
  std::string AfterWrite(const std::string& bytes, std::string_view section, std::string_view key,
                         std::string_view value) {
    return After(bytes, [&](const std::string& path) {
      const bool isWritten =
          service_->WriteIni(AsText(section), AsText(key), AsText(path), AsText(value)) == HelmswayCmds::Result::Ok;
      EXPECT_EQ(Read(path, section, key), value);
      return isWritten;
    });
  }

  std::string Read(std::string_view path, std::string_view section, std::string_view key) {
    std::string value;
    OrvelCalibrateS::StringTarget target(value);
    EXPECT_EQ(service_->ReadIni(AsText(section), AsText(key), AsText(path), AsText("(default)"), target),
              HelmswayCmds::Result::Ok);
    return value;
  }

  TemporaryFolder folder_;
  OrvelCalibrateS::Ref<ConfigurationService> service_ = [] {
    OrvelCalibrateS::Ref<ConfigurationService> made;
    *made.Out() = new ConfigurationService;
    return made;
  }();
};

TEST_F(ConfigurationCorpusTest, AChangedValueLeavesAllOtherBytes) {
  for (const Kind& kind : Corpus()) {
    SCOPED_TRACE(kind.name);
    const Parts parts = TakenApart(kind);
    const std::string bytes = parts.ahead + parts.value + parts.behind;
    EXPECT_EQ(Read(folder_.Write("Marivane.ini", bytes), "S", "k"), parts.value);
    for (const std::string& value : {"7"s, R"("A=;#",12.5,\)"s, ""s, parts.value, std::string(5000, 'z')}) {
      EXPECT_EQ(AfterWrite(bytes, "S", "k", value), parts.ahead + value + parts.behind);
    }
    EXPECT_EQ(AfterWrite(bytes, "s", "K", "7"), parts.ahead + "7" + parts.behind);
  }
}

TEST_F(ConfigurationCorpusTest, AnAddedKeyLeavesAllOtherBytes) {
  for (const Kind& kind : Corpus()) {
    SCOPED_TRACE(kind.name);
    const Parts parts = TakenApart(kind);
    const std::string bytes = parts.aheadOfNewKey + parts.behindNewKey;
    const std::string missingEnd = parts.behindNewKey.empty() ? kind.missingEnd : "";
    const std::string line = missingEnd + "New=a,b" + kind.lineEnd;
    EXPECT_EQ(AfterWrite(bytes, "S", "New", "a,b"), parts.aheadOfNewKey + line + parts.behindNewKey);
    EXPECT_EQ(AfterWrite(bytes, "Other", "New", "a,b"),
              bytes + kind.missingEnd + "[Other]" + kind.lineEnd + "New=a,b" + kind.lineEnd);
  }
}

TEST_F(ConfigurationCorpusTest, AKeyThatComesAndGoesLeavesTheFileAsItWas) {
  for (const Kind& kind : Corpus()) {
    SCOPED_TRACE(kind.name);
    const Parts parts = TakenApart(kind);
    const std::string bytes = parts.ahead + parts.value + parts.behind;
    const std::string missingEnd = parts.behindNewKey.empty() ? kind.missingEnd : "";
    EXPECT_EQ(After(bytes,
                    [](const std::string& path) {
                      return SetIniValue(path, "S", "New", "1") && RemoveIniValue(path, "S", "NEW");
                    }),
              parts.aheadOfNewKey + missingEnd + parts.behindNewKey);
  }
}

TEST_F(ConfigurationCorpusTest, AddsToFilesWithoutTheUsualShape) {
  struct Row {
    const char* name;
    std::string bytes;
    std::string section;
    std::string expected;
  };
  for (const Row& row : {
           Row{"empty file", "", "S", "[S]\r\nk=1\r\n"},
           Row{"byte order mark alone", "\xEF\xBB\xBF", "S", "\xEF\xBB\xBF[S]\r\nk=1\r\n"},
           Row{"head alone, no line end", "[S]", "S", "[S]\r\nk=1\r\n"},
           Row{"blank line alone", "\n", "S", "\n[S]\nk=1\n"},
           Row{"one line that ends in CR alone", "j=0\r", "S", "j=0\r\r\n[S]\r\nk=1\r\n"},
           Row{"section without a key", "[S]\n\n; c\n[T]\n", "S", "[S]\nk=1\n\n; c\n[T]\n"},
           Row{"ahead of all sections, behind a key", "; c\nj=0\n; c\n[T]\n", "", "; c\nj=0\nk=1\n; c\n[T]\n"},
           Row{"ahead of all sections, no key there", "\xEF\xBB\xBF[T]\r\n", "", "\xEF\xBB\xBFk=1\r\n[T]\r\n"},
       }) {
    EXPECT_EQ(AfterWrite(row.bytes, row.section, "k", "1"), row.expected) << row.name;
  }
}

}  // namespace
}  // namespace Helmsway
