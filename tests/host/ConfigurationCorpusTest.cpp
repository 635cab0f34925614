#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>
#include <string_view>

#include "bench/host/ConfigurationFile.h"
#include "bench/host/IniEdits.h"
#include "bench/host/IniFile.h"
#include "bench/host/StillFile.h"
#include "tests/host/FileKinds.h"
#include "tests/host/TemporaryFolder.h"

/// Files of every kind that turns up at a machine, and each kind of write on them: all other bytes stay.
namespace Helmsway {
namespace {

using namespace std::string_literals;

/// The bytes after a write, which must have left nothing but the file and can be read again.
std::string AfterWrite(const std::string& bytes, std::string_view section, std::string_view key,
                       std::string_view value) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("Marivane.ini", bytes);
  MarkAsWhole(path);
  EXPECT_FALSE(SetIniValue(path, section, key, value));
  EXPECT_EQ(folder.Names(), std::set<std::string>{"Marivane.ini"});
  const std::string after = folder.Read("Marivane.ini");
  EXPECT_EQ(IniFile(after).Find(section, key), value);
  return after;
}

TEST(ConfigurationCorpusTest, EachKindOfWriteLeavesAllOtherBytes) {
  for (const auto& [name, text, lineEnd, missingEnd] : FileKinds()) {
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
