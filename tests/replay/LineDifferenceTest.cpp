#include <gtest/gtest.h>

#include <string>

#include "bench/replay/LineDifference.h"

namespace Helmsway {
namespace {

TEST(LineDifference, TellsEachPlaceByItsLines) {
  struct Row {
    const char* name;
    const char* before;
    const char* after;
    const char* difference;
  };
  const Row rows[] = {
      {"the same", "a\nb\n", "a\nb\n", ""},
      {"only line ends differ", "a\r\nb", "a\nb\n", ""},
      {"a changed line", "a\nb\nc\n", "a\nB\nc\n", "@@ -2,1 +2,1 @@|-b|+B|"},
      {"two places", "a\nb\nc\nd\n", "A\nb\nc\nD\n", "@@ -1,1 +1,1 @@|-a|+A|@@ -4,1 +4,1 @@|-d|+D|"},
      {"an added line", "a\nc\n", "a\nb\nc\n", "@@ -1,0 +2,1 @@|+b|"},
      {"a removed line", "a\nb\nc\n", "a\nc\n", "@@ -2,1 +1,0 @@|-b|"},
      {"a file that was missing", "", "[A]\nb=1\n", "@@ -0,0 +1,2 @@|+[A]|+b=1|"},
      {"a line that repeats its neighbour", "a\na\n", "a\n", "@@ -2,1 +1,0 @@|-a|"},
      {"a later place counts what was added before it", "a\nb\nc\n", "x\na\nb\nC\n",
       "@@ -0,0 +1,1 @@|+x|@@ -3,1 +4,1 @@|-c|+C|"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    std::string difference;
    for (const std::string& line : LineDifference(row.before, row.after)) difference += line + "|";
    EXPECT_EQ(difference, row.difference);
  }
}

}  // namespace
}  // namespace Helmsway
