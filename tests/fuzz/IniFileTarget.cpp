// The reader and the edits of configuration files. Input: SECTION\|KEY\|VALUE\|BYTES, the last being the file.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "bench/host/IniEdits.h"
#include "bench/host/IniFile.h"
#include "tests/fuzz/Demand.h"
#include "tests/fuzz/PlainIniReading.h"
#include "tests/fuzz/ProcessorTimeLimit.h"

namespace Helmsway::Fuzzing {
namespace {

using Name = PlainIniReading::Name;

Name Folded(const std::string& section, const std::string& key) {
  return {PlainIniReading::Small(section), PlainIniReading::Small(key)};
}

bool IsPlainWord(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
  });
}

std::string InCapitals(std::string text) {
  for (char& letter : text) {
    if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - ('a' - 'A'));
  }
  return text;
}

/// All but at most `replaced` bytes of `before` stand at the two ends of `after`.
bool KeepsOtherBytes(std::string_view before, std::string_view after, std::size_t replaced) {
  const auto [front, frontAfter] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  const auto [back, backAfter] = std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend());
  return static_cast<std::size_t>(front - before.begin() + (back - before.rbegin())) + replaced >= before.size();
}

void CheckReading(const IniFile& file, const PlainIniReading& reading, const Name& asked) {
  for (const auto& [name, value] : reading.values) {
    Demand(file.Find(name.first, name.second) == value, "a key is found with its first value");
    Demand(file.Find(InCapitals(name.first), InCapitals(name.second)) == value, "letter case doesn't count");
  }
  const auto found = reading.values.find(asked);
  const auto expected = found == reading.values.end() ? std::nullopt : std::optional<std::string_view>(found->second);
  Demand(file.Find(asked.first, asked.second) == expected, "nothing else is found");
}

void CheckSetting(const std::string& bytes, const PlainIniReading& reading, const std::string& section,
                  const std::string& key, const std::string& value) {
  const Name name = Folded(section, key);
  const auto edited = WithValue(bytes, section, key, value);
  if (!edited) {
    const bool isPlain = (section.empty() || IsPlainWord(section)) && IsPlainWord(key) && IsPlainWord(value);
    Demand(!isPlain || PlainIniReading::IsUtf16(bytes), "plain words can be written into 8-bit text");
    return;
  }
  Demand(!PlainIniReading::IsUtf16(bytes), "a UTF-16 file isn't written");
  Demand(IniFile(*edited).Find(section, key) == PlainIniReading::Trimmed(value), "what is written is found");

  auto expected = reading.values;
  const auto old = expected.find(name);
  const std::size_t replaced = old == expected.end() ? 0 : old->second.size();
  Demand(KeepsOtherBytes(bytes, *edited, replaced), "all other bytes are kept");
  expected[name] = PlainIniReading::Trimmed(value);
  Demand(PlainIniReading(*edited).values == expected, "all other keys keep their values");
  Demand(WithValue(*edited, section, key, value) == edited, "writing the same again changes nothing");

  const bool isWholeLine = bytes.empty() || bytes.back() == '\n';
  if (!reading.values.contains(name) && reading.sections.contains(name.first) && isWholeLine) {
    Demand(WithoutKey(*edited, section, key) == bytes, "removing what was added gives the file as it was");
  }
}

void CheckRemoving(const std::string& bytes, const PlainIniReading& reading, const std::string& section,
                   const std::string& key) {
  const std::string left = WithoutKey(bytes, section, key);
  auto expected = reading.values;
  expected.erase(Folded(section, key));
  Demand(PlainIniReading(left).values == expected, "the key is gone, and no other");
  Demand(WithoutKey(left, section, key) == left, "removing again changes nothing");
  Demand(PlainIniReading::IsUtf16(left) == PlainIniReading::IsUtf16(bytes), "removing changes no encoding");
  if (!reading.values.contains(Folded(section, key))) Demand(left == bytes, "what isn't there can't be removed");
}

/// A file of a size at which reading it in more than linear time runs into the fuzzer's time limit. Its keys and
/// sections differ from copy to copy where one of them begins the file, and repeat elsewhere.
std::string Multiplied(const std::string& bytes) {
  constexpr std::size_t size = 1 << 20;
  std::string large;
  for (std::size_t copy = 0; large.size() < size; ++copy) large += std::to_string(copy) + bytes;
  return large;
}

void CheckLargeFile(const std::string& bytes, const std::string& section, const std::string& key) {
  const std::string large = Multiplied(bytes);
  const IniFile file(large);
  const auto edited = WithValue(large, section, key, "v");
  if (edited) Demand(IniFile(*edited).Find(section, key) == "v", "a large file can be written too");
  Demand(WithoutKey(large, section, key).size() <= large.size(), "removing makes no file larger");
}

}  // namespace
}  // namespace Helmsway::Fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Helmsway::Fuzzing;
  const ProcessorTimeLimit limit;
  FuzzedDataProvider input(data, size);
  const std::string section = input.ConsumeRandomLengthString();
  const std::string key = input.ConsumeRandomLengthString();
  const std::string value = input.ConsumeRandomLengthString();
  const std::string bytes = input.ConsumeRemainingBytesAsString();

  const PlainIniReading reading(bytes);
  CheckReading(Helmsway::IniFile(bytes), reading, Folded(section, key));
  CheckSetting(bytes, reading, section, key, value);
  CheckRemoving(bytes, reading, section, key);
  // One input of many, and always the same ones, since each takes as long as some hundred small ones.
  if (std::hash<std::string>()(bytes) % 512 == 0) CheckLargeFile(bytes, section, key);
  return 0;
}
