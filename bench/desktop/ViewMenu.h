#pragma once

#include <QDockWidget>
#include <QList>
#include <QMenu>

namespace Helmsway {

/// Text size, colours, and which panes are there.
class ViewMenu : public QMenu {
  Q_OBJECT

 public:
  explicit ViewMenu(const QList<QDockWidget*>& panes, QWidget* parent = nullptr);

 private:
  void AddTextSizes();
  void AddColors();
};

}  // namespace Helmsway
