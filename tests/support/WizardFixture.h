#pragma once

#include <array>
#include <deque>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "addin/wizard/frmAddIn.h"
#include "tests/support/FakeHost.h"
#include "tests/support/FakeIniService.h"

namespace OrvelCalibrateS::Testing {

/// Message boxes that write "message Title" into the host's log and answer from a queue. With an empty queue they
/// answer with their most careful button. A box with only OK doesn't use the queue.
class QueuedMessageBoxes final : public forms::IMessageBoxes {
 public:
  explicit QueuedMessageBoxes(FakeHost& host) : host_(host) {}

  Lines Shown;  ///< "ok-cancel exclamation Text"
  std::deque<forms::MessageAnswer> Answers;
  std::function<void()> Meanwhile;  ///< runs while a box is open, each time

  forms::MessageAnswer Show(std::string_view title, std::string_view text, forms::MessageButtons buttons,
                            forms::MessageIcon icon) noexcept override {
    constexpr std::array words{"ok ", "ok-cancel ", "yes-no "};
    const std::string mark = icon == forms::MessageIcon::None ? "none " : "exclamation ";
    Shown.push_back(words.at(static_cast<std::size_t>(buttons)) + mark + std::string(text));
    host_.Log.push_back("message " + std::string(title));
    if (Meanwhile) Meanwhile();
    if (buttons == forms::MessageButtons::Ok || Answers.empty()) return forms::CarefulAnswer(buttons);
    const forms::MessageAnswer answer = Answers.front();
    Answers.pop_front();
    return answer;
  }

 private:
  FakeHost& host_;
};

/// The host's log of one send, with the log of the events while the line is under way.
inline std::string Line(const std::string& line, const std::string& meanwhile = "") {
  return "stop False\nactive True\nsend " + line + "\n" + meanwhile + "sent " + line + "\n";
}
/// The same with a press of Stop while the line is under way.
inline std::string StoppedLine(const std::string& line) { return Line(line, "stop False\nstop True\n"); }
/// The same for the sends of the lines `from` up to, but not including, `to`.
inline std::string Span(const Lines& lines, std::size_t from, std::size_t to) {
  std::string text;
  for (std::size_t i = from; i < to; ++i) text += Line(lines[i]);
  return text;
}

/// The loaded wizard over an example configuration and a fake host, operated through its surface.
///
/// In the example the instrument has an X axis and a slider; a step of S is 0.05 mm, Up is positive; the teach tool is
/// head 1, offset 5 mm (100 steps), eject offset 1 mm (20 steps); the first serial-dilute head is head 2 with its S
/// position 600, so that 500 is the S value on record.
struct Wizard {
  FakeFiles Files;
  FakeHost Host;
  SharedRecords Records;
  SendState Sending;
  QueuedMessageBoxes Boxes{Host};
  std::shared_ptr<frmAddIn> Form;

  Wizard() {
    FakeIniService& ini = Ini();
    // clang-format off
    ini.Set("DeviceType", {{"Installed", "2"}, {"Item2", "\"Marivane\",True,t"}, {"SDXYEncoderMMStepFactorOff", "1"}});
    ini.Set("CageType", {{"Installed", "1"}, {"Item1", "\"Cage\""}});
    ini.Set("Device_Type2_Cage1", {{"Axis1", "X,0.1,1,2,3,0,9000,0,0,0,0,0,1,-1,150"},
                                   {"Axis2", "Z,0.01,1,2,3,0,9000,0,0,0,0,0,-1,1,-500"},
                                   {"Axis3", "S,0.05,1,2,3,0,9000,0,0,0,0,0,1,-1,0"},
                                   {"Axis4", "SDX,0.02,1,2,3,0,401,0,0,0,0,0,1,-1,0"},
                                   {"Axis5", "SDY,0.02,1,2,3,-37,900,0,0,0,0,0,1,-1,0"}});
    ini.Set("HeadType", {{"Installed", "2"}, {"SDTeachToolOffsetMM", "5"}, {"SDHeadEjectOffsetMM", "1"},
                         {"Item1", TeachTool}, {"Item2", EightChannels},
                         {"Item3", "\"96 Channel\",MICROTITER,0,300,0,96,0,0,0,0,0,0,7,1,0,0,96_CH,0,\"\",0,0"},
                         {"Item4", "\"1 Channel\",SERIALDILUTE,0,12.5,0,1,0,0,0,0,0,0,590,2,0,0,1_CH,0,\"\",0,0"}});
    ini.Set("NestType", {{"Installed", "2"}, {"Item1", "\"Nest A\",STAGE4"}, {"Item2", "\"Nest B\",STAGE5"}});
    ini.Set("PlateType", {{"Item1", "\"Rack A\",TIPRACK"}, {"Item2", "\"Plate\",PLATE"}, {"Item5", "Rack B,TIPRACK"}});
    ini.Set("TipType", {{"Installed", "4"}, {"Item1", "\"Tip A\",SERIALDILUTE"}, {"Item2", "\"Tip B\",MICROTITER"},
                        {"Item4", "\"Tip D\",SERIALDILUTE"}});
    ini.Set("Position_2", {{"Item1", "STAGE1,\"Left rack\",TIPRACK"}, {"Item2", "STAGE2,\"Plate stage\",PLATE"},
                           {"Item3", "STAGE3,\"Right rack\",TIPRACK"}});
    // clang-format on
    Host.Replies["STATUS SLIDER"] = "SLIDER CLOSED";
    Load();
  }

  static constexpr const char* TeachTool =
      "\"Teach Tool\",CALIBRATE,0,0,0,1,0,0,0,0,0,0,50,0,0,0,1_CH_SHORT,0,\"\",0,0";
  static constexpr const char* EightChannels =
      "\"8 Channel\",SERIALDILUTE,1.50,125,0,8,2,True,0,1,77,11,600,1.5,3.25,-4,8_CH,1,\"note\",0,2.5";

  FakeIniService& Ini() { return *Files.Service; }
  forms::ISurface& Screen() { return Form->Form(); }

  /// Loads the form again and hands it the host, as at the add-in's start.
  void Load() {
    Form = frmAddIn::Make(Files.Files, Records, Sending);
    Form->Form_Load();
    Form->Host().ParentConnection = Adopt<HelmswayCmds::IParentConnection>(new FakeHost::Connection(Host));
    Form->Host().FormParent = Adopt<HelmswayCmds::IHostWindow>(new FakeHost::Window(Host));
    Form->Host().StatusPanel = Adopt<HelmswayCmds::IStatusPanel>(new FakeHost::StatusPanel(Host));
    Screen().SetMessageBoxes(&Boxes);
  }

  forms::ControlId Find(std::string_view name, std::int16_t index = forms::NoIndex) {
    return Screen().Find(name, index);
  }
  forms::ControlState State(std::string_view name, std::int16_t index = forms::NoIndex) {
    return Screen().State(Find(name, index));
  }
  bool Press(std::int16_t button) { return Screen().Click(Find("cmdButton", button)); }
  bool Check(std::string_view box, bool checked) { return Screen().SetChecked(Find(box), checked); }
  bool Pick(std::string_view list, std::int32_t entry) { return Screen().Pick(Find(list), entry); }
  std::string CurrentSteps() { return std::string(State("txtCurrentCollect").text); }

  std::string VisiblePanels() {
    std::string visible;
    for (const auto& control : Form->Form().Controls()) {
      if (control->Kind() != forms::ControlKind::Frame || !control->Visible()) continue;
      visible += (visible.empty() ? "" : " ") + std::string(control->Name());
    }
    return visible;
  }
  /// The buttons that the operator can press now, by their indices: "0 5 16".
  std::string PressableButtons() {
    std::string buttons;
    for (std::int16_t index = 0; index <= 16; ++index) {
      const forms::ControlId button = Find("cmdButton", index);
      if (button == forms::NoControl || !Screen().Reachable(button) || !Screen().State(button).enabled) continue;
      buttons += (buttons.empty() ? "" : " ") + std::to_string(index);
    }
    return buttons;
  }

  /// Goes to the main page with the teach tool confirmed, and clears the log.
  void ToMainPage() {
    Press(10);
    Check("chkToolInstalled", true);
    Press(9);
    Forget();
  }
  void Forget() {
    Host.Log.clear();
    Boxes.Shown.clear();
    Ini().Reads.clear();
    Ini().Writes.clear();
  }

  /// Everything the host has seen since the last `Forget`, one entry per line.
  std::string Transcript() const {
    std::string text;
    for (const std::string& entry : Host.Log) text += entry + "\n";
    return text;
  }

  void SetAxisS(const std::string& mmPerStep, const std::string& signs) {
    Ini().Set("Device_Type2_Cage1", {{"Axis3", "S," + mmPerStep + ",1,2,3,0,9000,0,0,0,0,0," + signs + ",0"}});
  }
};

/// The setup of a table's row before its action.
using Given = std::function<void(Wizard&)>;

inline void Nothing(Wizard&) {}
/// On the main page and homed.
inline void Homed(Wizard& wizard) { wizard.Press(5), wizard.Forget(); }
inline void LinkDown(Wizard& wizard) { wizard.Host.LinkDown = true; }
inline void NoStatusPanel(Wizard& wizard) { wizard.Form->Host().StatusPanel = {}; }
inline void NoHostWindow(Wizard& wizard) { wizard.Form->Host().FormParent = {}; }
inline void ReadsFail(Wizard& wizard) { wizard.Ini().ReadsFail = true; }
inline void WritesFail(Wizard& wizard) { wizard.Ini().WritesFail = true; }
inline void SplitsFail(Wizard& wizard) { wizard.Ini().SplitsFail = true; }
/// The lines of a command text can't be split; those of the file can.
inline void CommandTextsFail(Wizard& wizard) { wizard.Ini().UnsplitText = "\r\n"; }
/// As many heads as a 16-bit counter can number, none of a kind that a walk searches for.
inline void EndlessHeads(Wizard& wizard) {
  for (int number = 1; number <= 32767; ++number) {
    wizard.Ini().Marivane[{"HEADTYPE", "ITEM" + std::to_string(number)}] = "A,,,,,,,,,,,,,,,,";
  }
}
inline void WithoutXAxis(Wizard& wizard) { wizard.Ini().Set("DeviceType", {{"Item2", "\"Marivane\",False,"}}); }

/// The operator presses Stop while that line is under way.
inline Given StopDuring(const std::string& line) {
  return [line](Wizard& wizard) { wizard.Host.Meanwhile[line] = [&] { wizard.Form->cmdButton_Click(16); }; };
}
inline Given Refuse(const std::string& line) {
  return [line](Wizard& wizard) { wizard.Host.Outcomes[line] = FakeHost::Outcome::Refused; };
}
inline Given Both(const Given& first, const Given& second) {
  return [=](Wizard& wizard) { first(wizard), second(wizard); };
}
inline Given Answering(std::deque<forms::MessageAnswer> answers) {
  return [answers](Wizard& wizard) { wizard.Boxes.Answers = answers; };
}
/// That key of Marivane.ini.
inline Given Key(std::string section, std::string key, std::string value) {
  return [=](Wizard& wizard) { wizard.Ini().Set(section, {{key, value}}); };
}

}  // namespace OrvelCalibrateS::Testing
