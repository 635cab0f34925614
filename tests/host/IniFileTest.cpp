#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "bench/host/IniEdits.h"
#include "bench/host/IniFile.h"

namespace Helmsway {
namespace {

using namespace std::string_literals;
using Found = std::optional<std::string_view>;

TEST(IniFileTest, FindsTheFirstKeyOfThatNameInTheFirstSectionThatHasIt) {
  struct Row {
    const char* name;
    std::string bytes;
    std::string section;
    std::string key;
    Found value;
  };
  const std::string twice = "[A]\nx=1\n[B]\nx=2\ny=3\n[a]\nX=4\nY=5\ny=6\n";
  for (const Row& row : {
           Row{"plain", "[HeadType]\r\nItem3=\"A\",1\r\n", "HeadType", "Item3", "\"A\",1"},
           Row{"other letter case", "[HeadType]\nITEM3=x\n", "Headtype", "item3", "x"},
           Row{"letter case of other letters counts", "[\xC3\x84]\nk=x\n", "\xC3\xA4", "k", {}},
           Row{"@ and ` are no letters of one another", "[S]\n@=1\n[=2\n", "S", "`", {}},
           Row{"first section has it", twice, "A", "x", "1"},
           Row{"second section of that name has it", twice, "A", "y", "5"},
           Row{"other section", twice, "B", "y", "3"},
           Row{"no such key", twice, "B", "z", {}},
           Row{"no such section", twice, "C", "x", {}},
           Row{"ends of names count", "[AB]\nC=1\n", "A", "BC", {}},
           Row{"beginning of a name isn't the name", "[A]\nItem10=1\n", "A", "Item1", {}},
           Row{"blanks and tabs around names and values", "\t[ \tA ]\t\n \tk \t= \tv w\t \n", "A", "k", "v w"},
           Row{"blank inside a name", "[A]\na b=1\n", "A", "a b", "1"},
           Row{"first equals sign divides", "[A]\nk=a=b==\n", "A", "k", "a=b=="},
           Row{"marks in a value", "[A]\nk=1;2 #3 %4 \\5 [6]\n", "A", "k", "1;2 #3 %4 \\5 [6]"},
           Row{"quotes stay", "[A]\nk=\" v \"\n", "A", "k", "\" v \""},
           Row{"empty value", "[A]\nk=\nk=2\n", "A", "k", ""},
           Row{"value of blanks", "[A]\nk= \t\r\n", "A", "k", ""},
           Row{"comments", "[A]\n;k=1\n \t# k=2\n  ;k=3\nk=4\n", "A", "k", "4"},
           Row{"commented head", "[A]\n;[B]\nk=1\n", "A", "k", "1"},
           Row{"line without equals sign", "[A]\nk\nk 1\nk=2\n", "A", "k", "2"},
           Row{"no name ahead of the equals sign", "[A]\n=1\n", "A", "", {}},
           Row{"section alone is no key", "[A]\n", "A", "", {}},
           Row{"ahead of the first section", "k=1\n[A]\nk=2\n", "", "k", "1"},
           Row{"section without a name goes on from there", "k=1\n[A]\nk=2\n[]\nj=3\n", "", "j", "3"},
           Row{"text behind a head", "[A] ; [B]\nk=1\n", "A", "k", "1"},
           Row{"first bracket ends a head", "[A]B]\nk=1\n", "A", "k", "1"},
           Row{"head without an end", "[A]\n[B\nk=1\n", "B", "k", "1"},
           Row{"key below a head without an end isn't the section's above", "[A]\n[B\nk=1\n", "A", "k", {}},
           Row{"head without an end holds an equals sign", "[A]\n[k=1\n", "A", "[k", {}},
           Row{"byte order mark", "\xEF\xBB\xBF[A]\nk=1\n", "A", "k", "1"},
           Row{"byte order mark inside the file is a letter", "[A]\n\xEF\xBB\xBFk=1\n", "A", "k", {}},
           Row{"CR LF and LF", "[A]\r\nk=1\r\nj=2\ni=3\r\n", "A", "k", "1"},
           Row{"CR alone ends no line", "[A]\nk=1\rj=2\n", "A", "k", "1\rj=2"},
           Row{"no last line end", "[A]\nk=1", "A", "k", "1"},
           Row{"no line end at all", "k=1", "", "k", "1"},
           Row{"NUL bytes", "[A\0B]\nk\0=1\0 2\n"s, "A\0B"s, "k\0"s, std::string_view("1\0 2", 4)},
           Row{"bytes that aren't UTF-8", "[\xFF]\n\x80=\xC3\x28\n", "\xFF", "\x80", "\xC3\x28"},
           Row{"empty file", "", "A", "k", {}},
           Row{"byte order mark alone", "\xEF\xBB\xBF", "A", "k", {}},
       }) {
    EXPECT_EQ(IniFile(row.bytes).Find(row.section, row.key), row.value) << row.name;
  }
  EXPECT_EQ(IniFile().Find("A", "k"), std::nullopt) << "no file at all";
}

TEST(IniFileTest, AShortFileMayMove) {
  IniFile file("[A]\nk=1\n");
  const IniFile moved = std::move(file);
  EXPECT_EQ(moved.Find("A", "k"), "1");
}

TEST(IniFileTest, FindsEachOfManyKeys) {
  std::string bytes;
  for (int section = 0; section < 50; ++section) {
    bytes += "[Section" + std::to_string(section) + "]\n";
    for (int key = 0; key < 200; ++key)
      bytes += "Item" + std::to_string(key) + "=" + std::to_string(section * key) + "\n";
  }
  const IniFile file(bytes);
  for (int section = 0; section < 50; ++section) {
    for (int key = 0; key < 200; ++key) {
      const Found found = file.Find("SECTION" + std::to_string(section), "item" + std::to_string(key));
      ASSERT_EQ(found, std::to_string(section * key)) << section << " " << key;
    }
  }
  EXPECT_EQ(file.Find("Section50", "Item0"), std::nullopt);
  EXPECT_EQ(file.Find("Section0", "Item200"), std::nullopt);
}

// Where the cost of a file grows faster than its length, these don't come to an end in any reasonable time.
TEST(IniFileTest, DamagedTextDoesNotSlowItDown) {
  constexpr std::size_t manyBytes = 10'000'000;
  const std::string longName(1'000'000, 'n');
  std::string keys;
  for (int key = 0; key < 50'000; ++key) keys += "k" + std::to_string(key) + "=1\n";
  std::string heads;
  for (int head = 0; head < 200'000; ++head) heads += "[h" + std::to_string(head) + "\n";

  const std::string longHeadTwice = "[" + longName + "]\n" + keys + "[" + longName + "]\n" + keys;
  EXPECT_EQ(IniFile(longHeadTwice).Find(longName, "k49999"), "1");
  EXPECT_EQ(IniFile(heads + "k=1").Find("h199999", "k"), "1");
  for (const char letter : {'\0', '[', '=', ';', '\r', '\n', ' '}) {
    std::string bytes;
    bytes.resize(manyBytes, letter);
    EXPECT_EQ(IniFile(bytes).Find("", "k"), std::nullopt) << letter;
  }
  EXPECT_EQ(IniFile(longName + "=" + longName).Find("", longName), longName);
}

TEST(IniEditsTest, RemovesEveryLineOfThatKeyAndNothingElse) {
  struct Row {
    const char* name;
    std::string bytes;
    std::string left;
  };
  for (const Row& row : {
           Row{"one", "[S]\r\nk=1\r\nj=2\r\n", "[S]\r\nj=2\r\n"},
           Row{"all of them", "[S]\nK=1\nj=2\n k =3\n[T]\nk=4\n[s]\n;k=5\nk=6\n", "[S]\nj=2\n[T]\nk=4\n[s]\n;k=5\n"},
           Row{"last line without an end", "[S]\nj=2\nk=1", "[S]\nj=2\n"},
           Row{"none", "k=1\n[T]\nk=2\n[S]\nk", "k=1\n[T]\nk=2\n[S]\nk"},
           Row{"byte order mark stays", "\xEF\xBB\xBF[S]\nk=1\n", "\xEF\xBB\xBF[S]\n"},
           Row{"empty file", "", ""},
       }) {
    EXPECT_EQ(WithoutKey(row.bytes, "S", "k"), row.left) << row.name;
  }
  EXPECT_EQ(WithoutKey("\xEF\xBB\xBFk=1\n[S]\nk=2\n", "", "k"), "\xEF\xBB\xBF[S]\nk=2\n") << "ahead of all sections";
}

TEST(IniEditsTest, RefusesWhatTheFileCouldNotGiveBack) {
  struct Row {
    std::string section;
    std::string key;
    std::string value;
  };
  for (const Row& row :
       {Row{"S", "k", "1\n2"}, Row{"S", "k", "1\r"}, Row{"S\n", "k", "1"}, Row{"S\r", "k", "1"}, Row{"S]", "k", "1"},
        Row{" S", "k", "1"}, Row{"S\t", "k", "1"}, Row{"S", "", "1"}, Row{"S", "k=j", "1"}, Row{"S", "k\nj", "1"},
        Row{"S", "k\rj", "1"}, Row{"S", ";k", "1"}, Row{"S", "#k", "1"}, Row{"S", "[k", "1"}, Row{"S", " k", "1"},
        Row{"S", "k ", "1"}, Row{"", "\xEF\xBB\xBFk", "1"}}) {
    EXPECT_EQ(WithValue("[S]\nk=0\n", row.section, row.key, row.value), std::nullopt)
        << "[" << row.section << "] " << row.key << "=" << row.value;
  }
  for (const Row& row : {Row{"S", "k", R"(a=b ;c #d [e] "f" %g \h)"}, Row{"S[", "k;#[]", "1"}, Row{"", "k", "1"},
                         Row{"a b", "c d", ""}, Row{"\xFF", "\xFE\0"s, "\0"s}}) {
    const std::optional<std::string> bytes = WithValue("\xEF\xBB\xBF[T]\nk=0\n", row.section, row.key, row.value);
    ASSERT_TRUE(bytes) << "[" << row.section << "] " << row.key;
    EXPECT_EQ(IniFile(*bytes).Find(row.section, row.key), row.value);
  }
}

}  // namespace
}  // namespace Helmsway
