#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/instrument/Instrument.h"

namespace Helmsway {

/// The S position of one head that a calibration concerns, in the three places where it stands.
struct HeadPosition {
  std::string item;       ///< the item number: "10"
  std::string name;       ///< empty only for an entry that ends the catalogue and that a save would write all the same
  std::int32_t file = 0;  ///< S steps, as the file has it
  /// S steps: what a save of the value on the screen would make of it. Empty when there is no such value, or when it is
  /// outside 32 bits, so that a save would keep the file's.
  std::optional<std::int32_t> screen;
  std::string memoryName;  ///< "AspirateOrigin_8Ch_125_S"; empty: the instrument gets no line for this head
  std::string memory;      ///< the instrument's value of that name; empty: it has none
};

/// How the instrument's value stands to the file's.
enum class Agreement {
  NotKept,  ///< the instrument keeps no value for such a head
  NoValue,  ///< it would, but has none
  Same,
  Differs
};

struct HeadPositions {
  std::vector<HeadPosition> heads;  ///< in the order of the file
  double mmPerStep = 0;             ///< of the S axis; 0 when the machine has none

  /// The head whose position is the instrument's value for this one: the last of those that share the value, as it is
  /// in a save; `head` itself when it has none.
  const HeadPosition& Counting(const HeadPosition& head) const;

  /// Judged by the head that counts. Texts are compared, as the instrument was told them.
  Agreement AgreementOf(const HeadPosition& head) const;
};

/// `screenText` is the text of `txtCurrentCollect`; empty: there is no value on the screen. A file that is missing
/// gives no heads.
HeadPositions ReadHeadPositions(const std::filesystem::path& marivaneIni, std::string_view screenText,
                                const CalibrationValues& memory);

}  // namespace Helmsway
