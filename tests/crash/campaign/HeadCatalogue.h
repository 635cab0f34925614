#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Helmsway {

/// A Marivane.ini whose catalogue has 300 heads that a calibration of the S axis concerns, and others between them.
/// Around the heads' lines stands what turns up in such files: remarks, blank lines, mixed line ends, duplicates.
///
/// A save of it takes 301 steps: each head in the order of the walk, then the mark that the axis is calibrated.
class HeadCatalogue {
 public:
  static constexpr int HeadCount = 300;
  static constexpr int StepCount = HeadCount + 1;
  /// What the catalogue says of them at 0.05 mm a step.
  static constexpr int TeachToolOffset = 100;
  static constexpr int EjectOffset = 20;

  HeadCatalogue() {
    for (int head = 0; head < HeadCount; ++head) heads_.push_back(Typed(head));
  }

  std::string Bytes() const {
    std::string bytes = "; heads of this instrument\r\n[DeviceType]\r\nAxisCalibratedS = " + mark_ + "\t\r\n\r\n";
    bytes += "[ HeadType ]\nInstalled=2\nSDTeachToolOffsetMM=5\nSDHeadEjectOffsetMM=1\n\n";
    for (std::size_t head = 0; head < heads_.size(); ++head) {
      // Every 25 heads one that isn't concerned.
      const std::size_t item = head + 1 + head / 25;
      bytes += "Item" + std::to_string(item) + "=" + heads_[head] + (head % 3 == 0 ? "\r\n" : "\n");
      if (head % 10 == 7) bytes += "; Item" + std::to_string(item) + "=\"remark\",SERIALDILUTE\n\n";
      if (head % 25 == 24) bytes += "Item" + std::to_string(item + 1) + "=\"96 Channel\",MICROTITER,0,300,0,96,,,\r\n";
    }
    return bytes + "item3=\"again\",SERIALDILUTE,0\n[Empty]\n[headtype]\nItem1=\"decoy\",SERIALDILUTE,1\nlast line";
  }

  /// Does the first steps of a save of that S value.
  void Advance(int steps, int sValue) {
    for (int step = 0; step < steps; ++step) Step(step, sValue);
  }

  /// After how many steps of a save the file holds these bytes; nothing when it does after none. The S value must be
  /// another one than those on record.
  std::optional<int> StepsIn(std::string_view bytes, int sValue) const {
    int heads = 0;
    for (std::size_t place = 0; heads < HeadCount; ++heads) {
      place = bytes.find("=" + Written(heads, sValue), place);
      if (place == std::string_view::npos) break;
    }
    for (int steps = heads == HeadCount ? StepCount : heads; steps >= heads; --steps) {
      HeadCatalogue catalogue = *this;
      catalogue.Advance(steps, sValue);
      if (catalogue.Bytes() == bytes) return steps;
    }
    return std::nullopt;
  }

 private:
  static std::string Typed(int head) {
    if (head == 0) return R"("Teach Tool",CALIBRATE,0,0,0,1,0,0,0,0,0,0,50,0,0,0,1_CH_SHORT,0,"",0,0)";
    return "Head " + std::to_string(head) + ",SERIALDILUTE,1.50,125.0,0,8,2,True,0,1,77,11,600,1.5,3.25,-4,8_CH,1," +
           "\"note; #" + std::to_string(head) + "\",0,2.5";
  }

  static std::string Written(int head, int sValue) {
    const std::string positions = std::to_string(sValue + TeachToolOffset + EjectOffset) +
                                  (head == 0 ? ",0," : ",11,") + std::to_string(sValue + TeachToolOffset);
    if (head == 0) return "\"Teach Tool\",CALIBRATE,0,0,0,1,0,0,0,0," + positions + ",0,0,0,1_CH_SHORT,0,\"\",0,0";
    return "\"Head " + std::to_string(head) + "\",SERIALDILUTE,1.5,125,0,8,2,1,0,1," + positions +
           ",1.5,3.25,-4,8_CH,1,\"note; #" + std::to_string(head) + "\",0,2.5";
  }

  void Step(int step, int sValue) {
    if (step == HeadCount) {
      mark_ = "1";
    } else {
      heads_[static_cast<std::size_t>(step)] = Written(step, sValue);
    }
  }

  std::vector<std::string> heads_;
  std::string mark_ = "0";
};

}  // namespace Helmsway
