#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace OrvelCalibrateS {

struct Configuration;

/// One of the three places of a nest, made for one head shape. Steps are motor steps.
struct NestSlot {
  std::string SlotNumber;  ///< "1", "2" or "3"
  bool Present = false;    ///< only mirrors the file: the slot names a head
  std::string HeadCode;    ///< the head shape that the slot takes
  std::string HeadName;    ///< display text
  std::int16_t SlotField4 = 0;
  std::int32_t OffsetX = 0;  ///< SD X steps from the base position of the nest's stage position
  std::int32_t OffsetY = 0;  ///< SD Y steps, likewise
  std::int32_t ZHeight = 0;  ///< Z steps
};

/// A pipette head nest.
struct NestType {
  std::string Index;         ///< the item number
  std::string Name;          ///< display text
  std::string PositionName;  ///< name of the stage position that the nest is on
  NestSlot Slot1;
  NestSlot Slot2;
  NestSlot Slot3;
};

/// The slot for that head shape: the first of slots 1 and 2 with the same code, else slot 3, which needs no match.
const NestSlot& SlotFor(const NestType& nest, std::string_view headCode);

/// Reads the nest with that item number; with an empty item and a name, the first nest on the stage position with that
/// name, or the blank record after the end of the list; with neither, the installed nest. The shared `DeviceType` and
/// `AxisZ` must have been loaded. Never fails.
NestType ReadNestType(const Configuration& configuration, std::string_view item = "", std::string_view name = "",
                      std::string_view file = "");

}  // namespace OrvelCalibrateS
