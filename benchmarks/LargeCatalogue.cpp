#include "benchmarks/LargeCatalogue.h"

#include <cstddef>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Helmsway::Benchmarks {
namespace {

constexpr std::pair<std::string_view, std::size_t> catalogues[] = {
    {"[HeadType]", 300}, {"[TipType]", 200}, {"[NestType]", 100}, {"[PlateType]", 200}, {"[Position_2]", 200}};

std::size_t WantedCount(std::string_view line) {
  for (const auto& [head, count] : catalogues) {
    if (line.substr(0, head.size()) == head) return count;
  }
  return 0;
}

/// The line's value with the number in its first place, within the quotes where there are some.
std::string Renamed(const std::string& value, std::size_t number) {
  std::size_t end = value.find(',');
  if (end != std::string::npos && end > 0 && value[end - 1] == '"') --end;
  std::string renamed = value;
  return renamed.insert(end == std::string::npos ? value.size() : end, " no. " + std::to_string(number));
}

/// Adds items to the section that ends here.
class SectionGrowth {
 public:
  void Begin(std::string_view head) {
    wanted_ = WantedCount(head);
    values_.clear();
  }

  void See(std::string_view line) {
    if (wanted_ == 0 || line.substr(0, 4) != "Item") return;
    values_.emplace_back(line.substr(line.find('=') + 1));
  }

  void End(std::string& bytes) {
    const std::size_t given = values_.size();
    if (given == 0) return;
    grown_ += 1;
    for (std::size_t number = given + 1; number <= wanted_; ++number) {
      bytes += "Item" + std::to_string(number) + "=" + Renamed(values_[numbers_() % given], number) + "\n";
    }
    values_.clear();
  }

  std::size_t Grown() const { return grown_; }

 private:
  std::mt19937 numbers_{20'240'301};  // its row is the same everywhere; a distribution's isn't
  std::size_t wanted_ = 0;
  std::vector<std::string> values_;
  std::size_t grown_ = 0;
};

}  // namespace

std::string LargeCatalogue(std::string_view example) {
  std::string bytes;
  SectionGrowth growth;
  while (!example.empty()) {
    const std::size_t end = example.find('\n');
    std::string_view line = example.substr(0, end);
    example.remove_prefix(end == std::string_view::npos ? example.size() : end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (!line.empty() && line.front() == '[') {
      growth.End(bytes);
      growth.Begin(line);
    }
    growth.See(line);
    bytes.append(line) += '\n';
  }
  growth.End(bytes);
  if (growth.Grown() != std::size(catalogues)) throw std::runtime_error("the example has other catalogues");
  return bytes;
}

}  // namespace Helmsway::Benchmarks
