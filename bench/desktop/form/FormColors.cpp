#include "bench/desktop/form/FormColors.h"

#include <QtGlobal>
#include <vector>

namespace Helmsway {
namespace {

using forms::ControlKind;

struct Colors {
  QColor back;
  QColor text;
};

struct Roles {
  std::vector<QPalette::ColorRole> back;
  std::vector<QPalette::ColorRole> text;
};

/// The roles by which the kind's widget is painted.
Roles RolesOf(ControlKind kind) {
  switch (kind) {
    case ControlKind::CommandButton:
      return {{QPalette::Button}, {QPalette::ButtonText}};
    case ControlKind::ComboBox:
      return {{QPalette::Button, QPalette::Base}, {QPalette::ButtonText, QPalette::Text}};
    case ControlKind::TextBox:
      return {{QPalette::Base}, {QPalette::Text}};
    default:
      return {{QPalette::Window}, {QPalette::WindowText}};
  }
}

Colors SystemColors(forms::SystemColor color, ControlKind kind, const QPalette& form) {
  const auto pair = [&](QPalette::ColorRole back, QPalette::ColorRole text) {
    return Colors{form.color(QPalette::Active, back), form.color(QPalette::Active, text)};
  };
  if (color == forms::SystemColor::WindowBackground) return pair(QPalette::Base, QPalette::Text);
  return RolesOf(kind).back.front() == QPalette::Window ? pair(QPalette::Window, QPalette::WindowText)
                                                        : pair(QPalette::Button, QPalette::ButtonText);
}

/// A fixed colour has black or white text, whichever stands out more.
Colors FixedColors(const forms::Rgb& rgb) {
  constexpr int middleGray = 128;
  const QColor back(rgb.red, rgb.green, rgb.blue);
  return {back, qGray(back.rgb()) >= middleGray ? Qt::black : Qt::white};
}

}  // namespace

QColor Mixed(const QColor& first, const QColor& second) {
  return {(first.red() + second.red()) / 2, (first.green() + second.green()) / 2, (first.blue() + second.blue()) / 2};
}

QPalette ControlPalette(ControlKind kind, const forms::Color& backColor, const QPalette& form) {
  const Roles roles = RolesOf(kind);
  const auto* const rgb = std::get_if<forms::Rgb>(&backColor);
  const Colors colors = rgb ? FixedColors(*rgb) : SystemColors(std::get<forms::SystemColor>(backColor), kind, form);
  QPalette palette;
  for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    // Paler, yet readable, which the text of a style's own disabled colours often isn't.
    const QColor text = group == QPalette::Disabled ? Mixed(colors.text, colors.back) : colors.text;
    for (const auto role : roles.back) palette.setColor(group, role, colors.back);
    for (const auto role : roles.text) palette.setColor(group, role, text);
  }
  return palette;
}

}  // namespace Helmsway
