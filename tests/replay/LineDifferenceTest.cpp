#include <gtest/gtest.h>

#include <array>
#include <string>

#include "bench/replay/LineDifference.h"

namespace Helmsway {
namespace {

TEST(LineDifference, TellsEachPlaceByItsLines) {
  const std::array<const char*, 3> rows[] = {
      // before, after and the difference
      {"a\r\nb", "a\nb\n", ""},  // only line ends differ
      {"a\nb\nc\n", "a\nB\nc\n", "@@ -2,1 +2,1 @@|-b|+B|"},
      {"a\nb\nc\n", "a\nc\n", "@@ -2,1 +1,0 @@|-b|"},
      {"", "[A]\nb=1\n", "@@ -0,0 +1,2 @@|+[A]|+b=1|"},
      {"a\na\n", "a\n", "@@ -2,1 +1,0 @@|-a|"},
      {"a\nb\nc\n", "x\na\nb\nC\n", "@@ -0,0 +1,1 @@|+x|@@ -3,1 +4,1 @@|-c|+C|"},
  };
  for (const auto& [before, after, expected] : rows) {
    std::string difference;
    for (const std::string& line : LineDifference(before, after)) difference += line + "|";
    EXPECT_EQ(difference, expected);
  }
}

}  // namespace
}  // namespace Helmsway
