#include "addin/wizard/frmAddInDesign.h"

#include <array>

#include "addin/wizard/Button.h"

namespace OrvelCalibrateS {
namespace {

using forms::Alignment;
using forms::Arrow;
using forms::ControlDesign;
using forms::ControlKind;
using forms::NoIndex;
using forms::Rectangle;

enum class Shown { Yes, No };
enum class Usable { Yes, No };

constexpr Rectangle wholePage{120, 720, 8295, 5415};

ControlDesign Panel(std::string_view name, Rectangle bounds, std::string_view caption, Shown shown) {
  ControlDesign row{.kind = ControlKind::Frame, .name = name, .container = "picFrame", .bounds = bounds};
  row.caption = caption;
  row.visible = shown == Shown::Yes;
  return row;
}

ControlDesign PushButton(Button button, std::string_view container, Rectangle bounds, std::string_view caption,
                         Usable usable = Usable::Yes) {
  ControlDesign row{
      .kind = ControlKind::CommandButton, .name = "cmdButton", .index = IndexOf(button), .container = container};
  row.bounds = bounds;
  row.caption = caption;
  row.enabled = usable == Usable::Yes;
  return row;
}

ControlDesign StopButton(Button button, std::string_view container, Rectangle bounds) {
  ControlDesign row = PushButton(button, container, bounds, "Stop");
  row.backColor = forms::Rgb{255, 128, 128};
  row.bold = true;
  return row;
}

ControlDesign ArrowButton(Button button, std::string_view container, Rectangle bounds, Arrow arrow) {
  ControlDesign row = PushButton(button, container, bounds, "");
  row.arrow = arrow;
  return row;
}

ControlDesign Label(std::string_view name, std::int16_t index, std::string_view container, Rectangle bounds,
                    std::string_view caption, Alignment alignment = Alignment::Left) {
  ControlDesign row{.kind = ControlKind::Label, .name = name, .index = index, .container = container};
  row.bounds = bounds;
  row.caption = caption;
  row.alignment = alignment;
  return row;
}

ControlDesign List(std::string_view name, std::string_view container, Rectangle bounds, std::string_view entries = "") {
  ControlDesign row{.kind = ControlKind::ComboBox, .name = name, .container = container, .bounds = bounds};
  row.backColor = forms::SystemColor::WindowBackground;
  row.entries = entries;
  return row;
}

ControlDesign Check(std::string_view name, std::string_view container, Rectangle bounds, std::string_view caption) {
  ControlDesign row{.kind = ControlKind::CheckBox, .name = name, .container = container, .bounds = bounds};
  row.caption = caption;
  return row;
}

ControlDesign LockedText(std::string_view name, std::string_view container, Rectangle bounds) {
  ControlDesign row{.kind = ControlKind::TextBox, .name = name, .container = container, .bounds = bounds};
  row.backColor = forms::SystemColor::WindowBackground;
  row.locked = true;
  return row;
}

ControlDesign Background() {
  return {.kind = ControlKind::PictureBox, .name = "picFrame", .bounds = {120, 120, 8775, 6375}};
}

}  // namespace

std::span<const forms::ControlDesign> FormDesign() {
  // Two pages: fraMove and fraTest are the main page, with Home All and Stop free beside them; each of the other panels
  // fills the whole area and covers those two buttons.
  static const std::array design{
      Background(),

      Panel("fraMove", {120, 720, 4695, 2655}, "Move Syringe", Shown::No),
      Panel("fraTest", {120, 3480, 8295, 2655}, "Test", Shown::No),
      Panel("fraEject", wholePage, "", Shown::No),
      Panel("fraDoEject", wholePage, "", Shown::No),
      Panel("fraInitial", wholePage, "", Shown::Yes),
      Panel("fraEjectDone", wholePage, "", Shown::No),
      Panel("fraWarning", wholePage, "", Shown::No),
      StopButton(Button::Stop, "picFrame", {6480, 1560, 1695, 375}),
      PushButton(Button::HomeAll, "picFrame", {6480, 1080, 1695, 375}, "Home All"),
      Label("lblTitle", NoIndex, "picFrame", {120, 180, 8295, 405}, "Calibrate Syringe Axis"),

      PushButton(Button::ContinueFromStart, "fraInitial", {6240, 4800, 1695, 375}, "Continue"),
      Label("Label4", NoIndex, "fraInitial", {480, 960, 7335, 855},
            "Please ensure that the Marivane is switched on and is in Remote Mode before you continue with this "
            "calibration."),

      Label("Label1", NoIndex, "fraWarning", {480, 480, 7335, 855},
            "To accurately calibrate, this Add-In feature requires a 1/8/12 Pipette Module loaded with a teaching tool "
            "and nothing situated at Stage Position 2."),
      Label("Label2", NoIndex, "fraWarning", {480, 1440, 7335, 615},
            "Please confirm whether or not a teaching tool is currently installed in the pipette module and that Stage "
            "Position 2 is empty."),
      Check("chkToolInstalled", "fraWarning", {720, 2400, 6855, 375},
            "A teaching tool is installed and Stage Position 2 is empty"),
      Check("chkToolUninstalled", "fraWarning", {720, 2880, 6855, 375}, "A teaching tool is NOT installed"),
      PushButton(Button::ContinueWithTool, "fraWarning", {6240, 4800, 1695, 375}, "Continue", Usable::No),

      Label("lblContinue", 0, "fraEject", {480, 720, 7335, 615},
            "The pipette head that is currently installed in the pipette module will be ejected to Stage Position 2."),
      Label("lblContinue", 1, "fraEject", {480, 1440, 7335, 615},
            "Please confirm that Stage Position 2 is empty and click 'Continue' to eject the pipette head."),
      Check("chkStageEmpty", "fraEject", {720, 2400, 6855, 375}, "Stage Position 2 is empty"),
      PushButton(Button::ContinueToEject, "fraEject", {6240, 4800, 1695, 375}, "Continue", Usable::No),

      Label("lblEjecting", NoIndex, "fraDoEject", {480, 1920, 7335, 615}, "Ejecting the pipette head to Stage 2...",
            Alignment::Center),
      StopButton(Button::StopEjecting, "fraDoEject", {3300, 2880, 1695, 375}),

      Label("Label3", NoIndex, "fraEjectDone", {480, 1920, 7335, 615}, "Please remove the ejected pipette head.",
            Alignment::Center),
      PushButton(Button::ContinueAfterEject, "fraEjectDone", {6240, 4800, 1695, 375}, "Continue"),

      Label("lblField", 5, "fraMove", {240, 420, 1455, 255}, "Step size"),
      List("cboCollectStep", "fraMove", {1800, 375, 1335, 315}, "0.1 mm\n1 mm"),
      Label("lblField", 28, "fraMove", {240, 960, 1455, 255}, "Current steps"),
      LockedText("txtCurrentCollect", "fraMove", {1800, 915, 1335, 315}),
      PushButton(Button::Start, "fraMove", {240, 2085, 1215, 375}, "Start"),
      PushButton(Button::EjectTeachTool, "fraMove", {2880, 2085, 1635, 375}, "Eject Teach Tool"),
      PushButton(Button::Save, "fraMove", {1560, 2085, 1215, 375}, "Save", Usable::No),
      ArrowButton(Button::Up, "fraMove", {3600, 300, 735, 735}, Arrow::Up),
      ArrowButton(Button::Down, "fraMove", {3600, 1140, 735, 735}, Arrow::Down),

      Label("lblField", 0, "fraTest", {240, 420, 1215, 255}, "Nest Type"),
      Label("lblField", 1, "fraTest", {240, 900, 1215, 255}, "Head Type"),
      Label("lblField", 2, "fraTest", {4320, 420, 1215, 255}, "Tip Rack"),
      Label("lblField", 3, "fraTest", {240, 1380, 1215, 255}, "Tip Type"),
      Label("lblField", 4, "fraTest", {4320, 900, 1215, 255}, "Rack Position"),
      List("cboNestType", "fraTest", {1560, 375, 2415, 315}),
      List("cboHeadType", "fraTest", {1560, 855, 2415, 315}),
      List("cboPosition", "fraTest", {5640, 855, 2415, 315}),
      List("cboTipRack", "fraTest", {5640, 375, 2415, 315}),
      List("cboTipType", "fraTest", {1560, 1335, 2415, 315}),
      PushButton(Button::CollectHead, "fraTest", {240, 2040, 1695, 375}, "Collect Head", Usable::No),
      PushButton(Button::CollectTip, "fraTest", {2280, 2040, 1695, 375}, "Collect Tip", Usable::No),
      PushButton(Button::EjectTip, "fraTest", {4320, 2040, 1695, 375}, "Eject Tip", Usable::No),
      PushButton(Button::EjectHead, "fraTest", {6360, 2040, 1695, 375}, "Eject Head", Usable::No),
  };
  return design;
}

}  // namespace OrvelCalibrateS
