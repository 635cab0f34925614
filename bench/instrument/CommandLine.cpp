#include "bench/instrument/CommandLine.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <system_error>
#include <utility>
#include <vector>

namespace Helmsway {
namespace {

using Words = std::vector<std::string_view>;

enum class Argument { None, Position, Speed };

/// One form of line: its first words, and what stands behind them.
struct Form {
  std::string_view keyword;
  std::string_view object;  ///< the second word; empty when the keyword stands alone
  Argument argument = Argument::None;
  Command (*make)(std::int32_t argument) = nullptr;  ///< the argument is 0 for a form without one
};

template <class Plain>
Command Just(std::int32_t /*argument*/) {
  return Plain{};
}

template <Axis axis>
Command Move(std::int32_t target) {
  return MoveAxis{axis, target};
}

template <SliderState target>
Command Slide(std::int32_t /*argument*/) {
  return MoveSlider{target};
}

template <Axis axis>
Command Speed(std::int32_t speed) {
  return SetSpeed{axis, speed};
}

template <CollisionDetection detection>
Command Detect(std::int32_t /*argument*/) {
  return SetZCollisionDetection{detection};
}

/// The vocabulary, but for the calibration values, whose names are composed.
constexpr auto Forms = std::to_array<Form>({
    {"HOME", "ALL", Argument::None, Just<HomeAll>},
    {"HOME", "S", Argument::None, Just<HomeS>},
    {"MOVE", "X", Argument::Position, Move<Axis::X>},
    {"MOVE", "Y", Argument::Position, Move<Axis::Y>},
    {"MOVE", "Z", Argument::Position, Move<Axis::Z>},
    {"MOVE", "S", Argument::Position, Move<Axis::S>},
    {"MOVE", "SD_X", Argument::Position, Move<Axis::SdX>},
    {"MOVE", "SD_Y", Argument::Position, Move<Axis::SdY>},
    {"MOVE", "SLIDER_OPEN", Argument::None, Slide<SliderState::Open>},
    {"MOVE", "SLIDER_CLOSED", Argument::None, Slide<SliderState::Closed>},
    {"SET_SPEED", "S", Argument::Speed, Speed<Axis::S>},
    {"SET_SPEED", "Z", Argument::Speed, Speed<Axis::Z>},
    {"HW_Z_COLLISION", "ON", Argument::None, Detect<CollisionDetection::On>},
    {"HW_Z_COLLISION", "OFF", Argument::None, Detect<CollisionDetection::Off>},
    {"SET_CALIBRATION", "SAVE", Argument::None, Just<SaveCalibration>},
    {"STATUS", "SLIDER", Argument::None, Just<AskSliderState>},
    {"REV", "", Argument::None, Just<AskRevision>},
});

constexpr std::string_view CalibrationKeyword = "SET_CALIBRATION";
constexpr std::string_view TipEject = "TipEject_";
constexpr std::string_view AspirateOrigin = "AspirateOrigin_";
constexpr auto VolumeClasses = std::to_array<std::string_view>({"12", "30", "125", "300", "1250"});

CommandLine Understood(Command command) { return {std::move(command), {}}; }

CommandLine NotUnderstood(std::string reason) { return {std::nullopt, std::move(reason)}; }

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

/// A number read, or whether the text is none at all or one of more than 32 bits.
struct Number {
  std::errc failure{};
  std::int32_t value = 0;
};

Number ReadWholeNumber(std::string_view text) {
  Number number;
  const char* const end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, number.value);
  number.failure = stop == end ? failure : std::errc::invalid_argument;
  const bool isShortest = std::to_string(number.value) == text;
  if (number.failure == std::errc{} && !isShortest) number.failure = std::errc::invalid_argument;
  return number;
}

/// Why the text isn't the number that `subject` needs.
std::string NumberReason(std::string_view subject, std::string_view need, std::string_view text, std::errc failure) {
  if (failure == std::errc::result_out_of_range) {
    return std::string(text) + " is out of range for " + std::string(subject);
  }
  return std::string(subject) + " needs " + std::string(need) + ", not " + Quoted(text);
}

Words SplitAtBlanks(std::string_view line) {
  Words words;
  while (true) {
    const auto blank = line.find(' ');
    words.push_back(line.substr(0, blank));
    if (blank == std::string_view::npos) return words;
    line.remove_prefix(blank + 1);
  }
}

std::string SurplusReason(std::string_view subject, std::string_view surplus) {
  return "nothing may follow " + std::string(subject) + ", but " + Quoted(surplus) + " does";
}

bool TakePrefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

/// For what stands behind the quantity in a calibration name: "8Ch_125_S".
bool NamesHeadClass(std::string_view text) {
  const auto digits = std::min(text.find('C'), text.size());
  const auto channels = ReadWholeNumber(text.substr(0, digits));
  if (channels.failure != std::errc{} || channels.value < 1) return false;
  text.remove_prefix(digits);
  if (!TakePrefix(text, "Ch_") || !text.ends_with("_S")) return false;
  text.remove_suffix(std::string_view("_S").size());
  return std::find(VolumeClasses.begin(), VolumeClasses.end(), text) != VolumeClasses.end();
}

CommandLine ReadCalibration(const Words& words) {
  if (words.size() < 2) return NotUnderstood("SET_CALIBRATION needs SAVE, or the name of a value and the value");
  const auto name = words[1];
  auto headClass = name;
  const bool isTipEject = TakePrefix(headClass, TipEject);
  const bool isKnown = (isTipEject || TakePrefix(headClass, AspirateOrigin)) && NamesHeadClass(headClass);
  if (!isKnown) return NotUnderstood("the instrument keeps no calibration value " + Quoted(name));
  if (words.size() < 3) return NotUnderstood(std::string(name) + " needs a value");
  if (words.size() > 3) {
    return NotUnderstood(SurplusReason(std::string(name) + " " + std::string(words[2]), words[3]));
  }

  // The tip eject position has a minus sign of its own in front of the number's: "--30" is one below 0.
  auto digits = words[2];
  const bool hasOwnSign = !isTipEject || TakePrefix(digits, "-");
  const auto failure = hasOwnSign ? ReadWholeNumber(digits).failure : std::errc::invalid_argument;
  if (failure == std::errc{}) return Understood(SetCalibration{std::string(name), std::string(words[2])});
  const auto* const need = isTipEject ? "a minus sign with a whole number behind it" : "a whole number";
  return NotUnderstood(NumberReason(name, need, words[2], failure));
}

CommandLine ReadArguments(const Form& form, const Words& words) {
  const std::size_t head = form.object.empty() ? 1 : 2;
  const std::string subject =
      form.object.empty() ? std::string(form.keyword) : std::string(form.keyword) + " " + std::string(form.object);
  const std::size_t tail = form.argument == Argument::None ? 0 : 1;
  if (words.size() < head + tail) return NotUnderstood(subject + " needs a whole number");
  if (words.size() > head + tail) {
    const auto before = tail == 0 ? subject : subject + " " + std::string(words[head]);
    return NotUnderstood(SurplusReason(before, words[head + tail]));
  }
  if (form.argument == Argument::None) return Understood(form.make(0));

  const auto number = ReadWholeNumber(words[head]);
  if (number.failure != std::errc{}) {
    return NotUnderstood(NumberReason(subject, "a whole number", words[head], number.failure));
  }
  if (form.argument == Argument::Speed && number.value < 1) {
    return NotUnderstood(subject + " needs a speed of 1 or more, not " + std::string(words[head]));
  }
  return Understood(form.make(number.value));
}

/// Why no form begins with these words.
std::string NoFormReason(const Words& words) {
  std::string objects;
  for (const Form& form : Forms) {
    if (form.keyword == words[0]) objects += (objects.empty() ? "" : ", ") + std::string(form.object);
  }
  if (objects.empty()) return "unknown command " + Quoted(words[0]);
  const auto keyword = std::string(words[0]);
  if (words.size() == 1) return keyword + " needs a word behind it: " + objects;
  return keyword + " knows " + objects + ", but not " + Quoted(words[1]);
}

}  // namespace

CommandLine ReadCommandLine(std::string_view line) {
  if (line.empty()) return NotUnderstood("the line is empty");
  const auto isPrintable = [](char character) { return character >= ' ' && character <= '~'; };
  if (!std::all_of(line.begin(), line.end(), isPrintable)) {
    return NotUnderstood("the line holds a character that no command has");
  }
  const auto words = SplitAtBlanks(line);
  if (std::find(words.begin(), words.end(), std::string_view()) != words.end()) {
    return NotUnderstood("the line has a blank too many");
  }
  const auto begins = [&](const Form& form) {
    if (form.keyword != words[0]) return false;
    return form.object.empty() || (words.size() > 1 && form.object == words[1]);
  };
  const auto* const form = std::find_if(Forms.begin(), Forms.end(), begins);
  if (form != Forms.end()) return ReadArguments(*form, words);
  if (words[0] == CalibrationKeyword) return ReadCalibration(words);
  return NotUnderstood(NoFormReason(words));
}

bool IsCalibrationValue(std::string_view name, std::string_view value) {
  const auto line = std::string(CalibrationKeyword).append(" ").append(name).append(" ").append(value);
  const auto command = ReadCommandLine(line).command;
  return command && std::holds_alternative<SetCalibration>(*command);
}

std::string_view NameOf(Axis axis) {
  switch (axis) {
    case Axis::X:
      return "X";
    case Axis::Y:
      return "Y";
    case Axis::Z:
      return "Z";
    case Axis::S:
      return "S";
    case Axis::SdX:
      return "SD_X";
    case Axis::SdY:
      return "SD_Y";
  }
  return {};
}

}  // namespace Helmsway
