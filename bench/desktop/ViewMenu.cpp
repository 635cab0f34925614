#include "bench/desktop/ViewMenu.h"

#include "bench/desktop/Appearance.h"

namespace Helmsway {
namespace {

constexpr int TextSizeStep = 25;

}  // namespace

ViewMenu::ViewMenu(const QList<QDockWidget*>& panes, QWidget* parent) : QMenu(tr("&View"), parent) {
  setObjectName(QStringLiteral("viewMenu"));
  AddTextSizes();
  AddColors();
  addSeparator();
  for (const QDockWidget* const pane : panes) addAction(pane->toggleViewAction());
}

void ViewMenu::AddTextSizes() {
  const auto add = [this](const QString& text, const QKeySequence& keys, auto size) {
    QAction* const action = addAction(text);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [size] { Appearance::SetTextSize(size()); });
  };
  add(tr("&Larger Text"), QKeySequence::ZoomIn, [] { return Appearance::TextSize() + TextSizeStep; });
  add(tr("S&maller Text"), QKeySequence::ZoomOut, [] { return Appearance::TextSize() - TextSizeStep; });
  add(tr("&Normal Text"), QKeySequence(Qt::CTRL | Qt::Key_0), [] { return 100; });
}

void ViewMenu::AddColors() {
  QAction* const dark = addAction(tr("&Dark Colours"));
  dark->setObjectName(QStringLiteral("darkColors"));
  dark->setCheckable(true);
  connect(dark, &QAction::toggled, this,
          [](bool on) { Appearance::SetColors(on ? Appearance::Colors::Dark : Appearance::Colors::Desktop); });
}

}  // namespace Helmsway
