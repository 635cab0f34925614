#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string LabelOf(const forms::ControlState& state) {
  return std::string(state.name) + (state.index == forms::NoIndex ? "" : "(" + std::to_string(state.index) + ")");
}

std::string ColorName(const forms::Color& color) {
  if (const auto* system = std::get_if<forms::SystemColor>(&color)) {
    return *system == forms::SystemColor::WindowBackground ? " window-background" : "";
  }
  const auto& rgb = std::get<forms::Rgb>(color);
  return " rgb(" + std::to_string(rgb.red) + "," + std::to_string(rgb.green) + "," + std::to_string(rgb.blue) + ")";
}

/// The visible state of the control, in words. A plain one is visible, enabled, left-aligned, not bold, and has the
/// button-face colour.
std::string Describe(const forms::ISurface& screen, forms::ControlId control) {
  const forms::ControlState state = screen.State(control);
  const forms::Rectangle& at = state.bounds;
  std::ostringstream line;
  line << LabelOf(state) << " " << forms::TypeName(state.kind) << " " << at.left << "," << at.top << " " << at.width
       << "x" << at.height;
  if (!state.caption.empty()) line << " " << Quoted(state.caption);
  if (!state.visible) line << " hidden";
  if (!state.enabled) line << " disabled";
  line << ColorName(state.backColor);
  if (state.bold) line << " bold";
  if (state.alignment == forms::Alignment::Center) line << " centred";
  if (state.arrow != forms::Arrow::None) line << (state.arrow == forms::Arrow::Up ? " arrow-up" : " arrow-down");
  if (state.kind == forms::ControlKind::CheckBox) line << (state.checked ? " checked" : " unchecked");
  if (state.kind == forms::ControlKind::TextBox) line << " " << Quoted(state.text) << (state.locked ? " locked" : "");
  if (state.kind == forms::ControlKind::ComboBox) {
    line << " selected " << state.listIndex << " of [";
    for (std::int32_t i = 0; i < state.listCount; ++i) line << (i == 0 ? "" : " | ") << screen.Entry(control, i);
    line << "]";
  }
  return line.str();
}

void Draw(std::ostream& picture, const forms::ISurface& screen, forms::ControlId container, const std::string& indent) {
  for (forms::ControlId control = 0; control < screen.ControlCount(); ++control) {
    if (screen.State(control).container != container) continue;
    picture << indent << Describe(screen, control) << "\n";
    Draw(picture, screen, control, indent + "  ");
  }
}

std::string Captions(const forms::ISurface& screen) {
  return "form " + Quoted(screen.FormCaption()) + ", lblTitle " +
         Quoted(screen.State(screen.Find("lblTitle", forms::NoIndex)).caption) + "\n";
}

/// The form after Form_Load, and its captions in another language.
std::string Picture() {
  std::ostringstream picture;
  Wizard english;
  picture << "Containers hold their controls in stacking order, from the top. Twips, within the container.\n\n";
  Draw(picture, english.Screen(), forms::NoControl, "");
  picture << "\nlanguage 1: " << Captions(english.Screen());
  Wizard other;
  other.Ini().Helmsway[{"GENERAL", "LANGUAGE"}] = "2";
  other.Load();
  picture << "language 2: " << Captions(other.Screen());
  return picture.str();
}

TEST(FormPicture, TheOperatorFindsTheFormAsApproved) {
  const std::filesystem::path approved = HELMSWAY_APPROVED "/frmAddIn.txt";
  const std::string picture = Picture();
  if (std::getenv("HELMSWAY_APPROVE") != nullptr) {
    std::ofstream(approved, std::ios::binary) << picture;
    GTEST_SKIP() << "written: " << approved;
  }
  std::ostringstream expected;
  expected << std::ifstream(approved, std::ios::binary).rdbuf();
  EXPECT_EQ(expected.str(), picture) << "to accept the change:\n  HELMSWAY_APPROVE=1 "
                                     << std::filesystem::read_symlink("/proc/self/exe").string()
                                     << " --gtest_filter='FormPicture.*'";
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
