#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "bench/host/IniFile.h"

namespace Helmsway {
namespace {

bool IsLetter(char byte) { return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z'); }

/// Names are folded in steps of eight bytes, and the sixth bit is what tells small letters from capitals.
TEST(IniFileNamesTest, OnlyTheLettersOfAsciiHaveTwoCases) {
  constexpr char caseBit = 0x20;
  constexpr std::size_t longestName = 17;
  for (std::size_t size = 1; size <= longestName; ++size) {
    for (std::size_t at = 0; at < size; ++at) {
      for (int number = 0; number <= 0xff; ++number) {
        const char byte = static_cast<char>(number);
        std::string name(size, 'k');
        name[at] = byte;
        std::string other = name;
        other[at] = static_cast<char>(byte ^ caseBit);
        if (name.find_first_of("\t\n\r =;#[]") != std::string::npos) continue;
        const IniFile file("[" + name + "]\n" + name + "=1\n");
        ASSERT_TRUE(file.Find(name, name)) << number << " at " << at << " of " << size;
        ASSERT_EQ(file.Find(other, name).has_value(), IsLetter(byte)) << number << " at " << at << " of " << size;
        ASSERT_EQ(file.Find(name, other).has_value(), IsLetter(byte)) << number << " at " << at << " of " << size;
      }
    }
  }
}

TEST(IniFileNamesTest, FindsEachOfManyNumberedKeys) {
  constexpr int count = 20'000;
  std::string bytes = "[S]\n";
  for (int number = 1; number <= count; ++number) {
    bytes += "Item" + std::to_string(number) + "=" + std::to_string(number) + "\n";
  }
  const IniFile file(bytes);
  for (int number = 1; number <= count; ++number) {
    ASSERT_EQ(file.Find("s", "ITEM" + std::to_string(number)), std::to_string(number));
  }
}

}  // namespace
}  // namespace Helmsway
