#pragma once

#include <cstdint>
#include <string_view>
#include <variant>

/// The description of a form before it is created: a table with one row for each control.
namespace forms {

enum class ControlKind : std::uint8_t { PictureBox, Frame, CommandButton, Label, ComboBox, CheckBox, TextBox };

/// The name of the control's class, used to assign texts to controls: "Label", "CommandButton" and so on.
inline std::string_view TypeName(ControlKind kind) {
  switch (kind) {
    case ControlKind::PictureBox:
      return "PictureBox";
    case ControlKind::Frame:
      return "Frame";
    case ControlKind::CommandButton:
      return "CommandButton";
    case ControlKind::Label:
      return "Label";
    case ControlKind::ComboBox:
      return "ComboBox";
    case ControlKind::CheckBox:
      return "CheckBox";
    case ControlKind::TextBox:
      return "TextBox";
  }
  return "";
}

/// In twips (1/1440 inch), relative to the container's top left corner.
struct Rectangle {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;

  friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

enum class SystemColor : std::uint8_t { ButtonFace, WindowBackground };

struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  friend bool operator==(const Rgb&, const Rgb&) = default;
};

using Color = std::variant<SystemColor, Rgb>;

enum class Alignment : std::uint8_t { Left, Center };

enum class Arrow : std::uint8_t { None, Up, Down };

/// Index of a control that isn't a member of a control array.
inline constexpr std::int16_t NoIndex = -1;

/// One control as designed. A control array is a set of rows with one name and different indices.
///
/// The rows of a form are in stacking order, from the top: of two controls in the same container the earlier row covers
/// the later one. The first row is the outermost container, and every container comes before its contents.
struct ControlDesign {
  ControlKind kind = ControlKind::Label;
  std::string_view name = {};
  std::int16_t index = NoIndex;
  std::string_view container = {};  ///< name of the container, which is never in an array; empty for the outermost
  Rectangle bounds = {};
  std::string_view caption = {};
  bool visible = true;
  bool enabled = true;
  Color backColor = SystemColor::ButtonFace;
  bool bold = false;
  Alignment alignment = Alignment::Left;
  Arrow arrow = Arrow::None;      ///< the button's only content, in place of a caption
  std::string_view entries = {};  ///< of a list: its entries as designed, separated by line feeds
  bool locked = false;            ///< of a text box: nothing can be typed into it
};

}  // namespace forms
