#pragma once

#include <string>
#include <string_view>

#include "bench/instrument/SimulatedMarivane.h"

namespace Helmsway {

/// One line from its beginning to its end, with nothing in between.
inline Answer Execute(IInstrument& instrument, std::string_view line) {
  instrument.Begin(line);
  return instrument.End(false);
}

inline HeadType Head(const char* item, const char* name, const char* kind, std::int16_t channels, const char* code) {
  HeadType head;
  head.Index = item;
  head.Name = name;
  head.Kind = kind;
  head.Channels = channels;
  head.HeadCode = code;
  head.SPosition = -300;
  head.EjectSPosition = -400;
  head.SPositionMM = 4;
  head.SDTeachToolOffset = 3;
  head.TipMountDepth = 5;
  return head;
}

inline TipType Tip(const char* item, const char* name, double length) {
  TipType tip;
  tip.Item = item;
  tip.Name = name;
  tip.Kind = "SERIALDILUTE";
  tip.EjectHeight = 5;
  tip.CollectDepth = 8;
  tip.TipLength = length;
  return tip;
}

/// A model with round numbers: every step is 0.1 mm, and the module's face is 300 mm high with Z at 0. On the module is
/// the short head, which reaches 40 mm down, and 45 with its cone; with a tip on it 70. The stage is at 60 mm, its
/// lower level at 20. Stage 1 is at X 1000, Y 1000, stage 4 (lower) at X 3000, stage 6 at X 5000; the two slots of the
/// nest are at Y 5000, 200 SD_X steps from each other, their floors at 80.
inline MachineDescription BenchModel() {
  MachineDescription model;
  model.hasSlider = true;
  model.firmware = "2.10.33";
  model.axes = {{Axis::X, {0, 20000, 100, 1000, 0.1}},  {Axis::Y, {0, 20000, 0, 500, 0.1}},
                {Axis::Z, {-3000, 50, -10, 400, 0.1}},  {Axis::S, {-5000, 100, 0, 200, 0.1}},
                {Axis::SdX, {-500, 1500, 0, 100, 0.1}}, {Axis::SdY, {-500, 1500, 0, 100, 0.1}}};
  model.levels = {300, 60, 20, 0};
  model.headDepths.shortOneChannel = 40;
  model.headDepths.eightChannels = 50;
  model.headDepths.oneChannelTool = 42;
  model.heads = {Head("1", "Tool", "CALIBRATE", 1, "1_CH_SHORT"), Head("2", "Short", "SERIALDILUTE", 1, "1_CH_SHORT"),
                 Head("3", "Eight", "SERIALDILUTE", 8, "8_CH"), Head("4", "Spare", "SERIALDILUTE", 8, "8_CH")};
  model.heads[1].EjectZOffset = -10;
  model.tips = {Tip("1", "Tip", 30), Tip("2", "Long tip", 60)};
  model.plates.resize(1);
  model.plates[0].Item = "1";
  model.plates[0].Name = "Rack";
  model.plates[0].PlateHeight = 50;
  const auto place = [](const char* item, const char* name, const char* caption, bool lower, std::int32_t x) {
    const Target target{x, 1000, 0, 0};
    return MachineDescription::StagePlace{item, name, caption, true, lower, target, target, target};
  };
  model.places = {place("1", "STAGE1", "Stage 1", false, 1000), place("2", "STAGE4", "Stage 4", true, 3000),
                  place("3", "STAGE6", "Stage 6", false, 5000)};
  model.ejectPlace = "STAGE6";
  model.ejectTarget = {5000, 1000, 0, 0};
  model.slots = {{"1", "1", "Nest, slot 1", "1_CH_SHORT", "Tool", {1000, 5000, 0, 0}, false, 80},
                 {"1", "2", "Nest, slot 2", "8_CH", "Eight", {1000, 5000, 200, 0}, false, 80}};
  model.installedHead = "2";
  return model;
}

}  // namespace Helmsway
