#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "bench/host/IniEdits.h"
#include "bench/host/IniFile.h"

namespace Helmsway {
namespace {

using namespace std::string_literals;
using Found = std::optional<std::string_view>;

TEST(IniFileTest, FindsTheFirstKeyOfThatNameInTheFirstSectionThatHasIt) {
  const std::string twice = "[A]\nx=1\n[B]\nx=2\ny=3\n[a]\nX=4\nY=5\ny=6\n";
  // The file, section and key, and the value.
  const std::tuple<const char*, std::string, const char*, const char*, Found> rows[] = {
      {"other letter case", "[HeadType]\nITEM3=x\n", "Headtype", "item3", "x"},
      {"letter case of other letters counts", "[\xC3\x84]\nk=x\n", "\xC3\xA4", "k", {}},
      {"@ and ` are no letters of one another", "[S]\n@=1\n[=2\n", "S", "`", {}},
      {"second section of that name has it", twice, "A", "y", "5"},
      {"no such key", twice, "B", "z", {}},
      {"beginning of a name isn't the name", "[A]\nItem10=1\n", "A", "Item1", {}},
      {"blanks and tabs around names and values", "\t[ \tA ]\t\n \tk \t= \tv w\t \n", "A", "k", "v w"},
      {"first equals sign divides", "[A]\nk=a=b==\n", "A", "k", "a=b=="},
      {"comments", "[A]\n;k=1\n \t# k=2\n  ;k=3\nk=4\n", "A", "k", "4"},
      {"a comment is no key of its own", "[A]\n;k=1\n", "A", ";k", {}},
      {"nor behind the other mark", "[A]\n#k=1\n", "A", "#k", {}},
      {"commented head", "[A]\n;[B]\nk=1\n", "A", "k", "1"},
      {"no name ahead of the equals sign", "[A]\n=1\n", "A", "", {}},
      {"ahead of the first section", "k=1\n[A]\nk=2\n", "", "k", "1"},
      {"section without a name goes on from there", "k=1\n[A]\nk=2\n[]\nj=3\n", "", "j", "3"},
      {"first bracket ends a head", "[A]B]\nk=1\n", "A", "k", "1"},
      {"key below a head without an end isn't the section's above", "[A]\n[B\nk=1\n", "A", "k", {}},
      {"CR alone ends no line", "[A]\nk=1\rj=2\n", "A", "k", "1\rj=2"},
      {"CR at the very end ends no line", "[A]\nk=1\r", "A", "k", "1\r"},
  };
  for (const auto& [name, bytes, section, key, value] : rows) {
    EXPECT_EQ(IniFile(bytes).Find(section, key), value) << name;
  }
  EXPECT_EQ(IniFile().Find("A", "k"), std::nullopt) << "no file at all";
}

TEST(IniFileTest, FindsEachOfManyKeys) {
  std::string bytes;
  for (int key = 0; key < 7000; ++key) bytes += "[" + std::to_string(key % 7) + "]\nk" + std::to_string(key) + "=v\n";
  const IniFile file(bytes);
  for (int place = 0; place < 49'000; ++place) {
    const Found expected = place % 7 == place / 7 % 7 ? Found("v") : std::nullopt;
    ASSERT_EQ(file.Find(std::to_string(place % 7), "K" + std::to_string(place / 7)), expected) << place;
  }
}

/// The best of three, so that another program's turn on the processor doesn't count.
template <class Work>
double SecondsFor(Work&& work) {
  double best = std::numeric_limits<double>::infinity();
  for (int turn = 0; turn < 3; ++turn) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
  }
  return best;
}

// A cost that grew with the square of the length would be thousands of times that of a sound file.
TEST(IniFileTest, DamagedTextDoesNotSlowItDown) {
  constexpr std::size_t size = 2'000'000;
  const auto repeated = [](std::string_view unit) {
    std::string bytes;
    while (bytes.size() + unit.size() <= size) bytes += unit;
    return bytes;
  };
  std::string sound = "[S]\n";
  for (int key = 0; sound.size() < size; ++key) sound += "Item" + std::to_string(key) + "=Head,1.50,125,0,8,2,True\n";
  const double bound = 200 * SecondsFor([&] { EXPECT_EQ(IniFile(sound).Find("S", "k"), std::nullopt); });

  std::string longName = "[" + std::string(size / 4, 'n') + "]\n";
  for (int key = 0; longName.size() < size / 2; ++key) longName += "k" + std::to_string(key) + "=1\n";
  EXPECT_LT(
      SecondsFor([&] { EXPECT_EQ(IniFile(longName + longName).Find(std::string(size / 4, 'N'), "k20000"), "1"); }),
      bound)
      << "a name of half the file, twice";
  for (const char* unit :
       {"[", "=", ";", "\r", "\n", " ", "[S\n", "[S]\n", "k=1\n", "[S]\nj=1\n", "k \t", "\r\n=", "]"}) {
    const std::string bytes = repeated(unit);
    EXPECT_LT(SecondsFor([&] { EXPECT_FALSE(IniFile(bytes).Find("S", "x")); }), bound) << unit;
  }
  const std::string zeros(size, '\0');
  EXPECT_LT(SecondsFor([&] { EXPECT_FALSE(IniFile(zeros).Find("S", "x")); }), bound) << "NUL bytes";
}

TEST(IniEditsTest, RemovesEveryLineOfThatKeyAndNothingElse) {
  const std::pair<const char*, const char*> rows[] = {
      {"[S]\nK=1\nj=2\n k =3\n[T]\nk=4\n[s]\n;k=5\nk=6\n", "[S]\nj=2\n[T]\nk=4\n[s]\n;k=5\n"},
      {"[S]\nj=2\nk=1", "[S]\nj=2\n"},
      {"k=1\n[T]\nk=2\n[S]\nk", "k=1\n[T]\nk=2\n[S]\nk"},
      {"\xEF\xBB\xBF[S]\nk=1\n", "\xEF\xBB\xBF[S]\n"},
  };
  for (const auto& [bytes, left] : rows) EXPECT_EQ(WithoutKey(bytes, "S", "k"), left);
  EXPECT_EQ(WithoutKey("\xEF\xBB\xBFk=1\n[S]\nk=2\n", "", "k"), "\xEF\xBB\xBF[S]\nk=2\n") << "ahead of all sections";
  const std::string laterMark = "\n\xEF\xBB\xBFj=2\n";
  EXPECT_EQ(WithoutKey("k=1" + laterMark, "", "k"), laterMark) << "the line behind it keeps its name";
  for (const std::string& laterUtf16 : {"\xFF\xFE=2\n"s, "x\0y\0\n"s, "\0x\0y\n"s}) {
    const std::string left = WithoutKey("k=1\n" + laterUtf16, "", "k");
    EXPECT_TRUE(left.ends_with("\n" + laterUtf16));
    EXPECT_EQ(IniFile(left + "[S]\nk=1\n").Find("S", "k"), "1") << "still 8-bit text";
  }
  EXPECT_EQ(WithoutKey("k=1\r\nK=3\r" + laterMark, "", "k"), "\r" + laterMark) << "with the line end that it has";
}

TEST(IniEditsTest, RefusesWhatTheFileCouldNotGiveBack) {
  using Row = std::array<std::string, 3>;  // section, key and value
  const Row refused[] = {{"S", "k", "1\n2"}, {"S", "k", "1\r"}, {"S]", "k", "1"},   {" S", "k", "1"},
                         {"S", "", "1"},     {"S", "k=j", "1"}, {"S", "k\rj", "1"}, {"S", ";k", "1"},
                         {"S", "#k", "1"},   {"S", "[k", "1"},  {"S", "k\t", "1"},  {"", "\xEF\xBB\xBFk", "1"}};
  EXPECT_EQ(WithValue("", "", "\xFF\xFEk", "1"), std::nullopt) << "the file would look like UTF-16";
  for (const auto& [section, key, value] : refused) {
    EXPECT_EQ(WithValue("[S]\nk=0\n", section, key, value), std::nullopt) << section << "/" << key << "=" << value;
  }
  const Row kept[] = {{"S", "k", R"(a=b ;c #d [e] "f" %g \h)"}, {"S[", "k;#[]", "1"}, {"\xFF", "\xFE\0"s, "\0"s}};
  for (const auto& [section, key, value] : kept) {
    const auto bytes = WithValue("\xEF\xBB\xBF[T]\nk=0\n", section, key, value);
    EXPECT_EQ(IniFile(bytes.value()).Find(section, key), value);
  }
}

}  // namespace
}  // namespace Helmsway
