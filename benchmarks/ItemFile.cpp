#include "benchmarks/ItemFile.h"

#include <random>

namespace Helmsway::Benchmarks {

std::string ItemFile(std::size_t count) {
  std::mt19937 numbers(20'240'229);  // its row is the same everywhere; a distribution's isn't
  const auto number = [&](unsigned below) { return std::to_string(numbers() % below); };
  std::string bytes = "[DeviceType]\r\nInstalled=2\r\nItem2=Marivane,True,t\r\n\r\n[HeadType]\r\nInstalled=1\r\n";
  for (std::size_t item = 1; item <= count; ++item) {
    bytes += "Item" + std::to_string(item) + "=Head " + number(100) + ",SERIALDILUTE,1.50,125,0,8,2,True,0,1," +
             number(10'000) + ",11," + number(10'000) + ",1.5,3.25,-4,8_CH,1,note " + number(1'000'000) + ",0,2.5\r\n";
  }
  return bytes + "\r\n[TipType]\r\nInstalled=4\r\n";
}

std::vector<std::string> ItemKeys(std::size_t count) {
  std::vector<std::string> keys;
  for (std::size_t item = 1; item <= count; ++item) keys.push_back("Item" + std::to_string(item));
  return keys;
}

}  // namespace Helmsway::Benchmarks
