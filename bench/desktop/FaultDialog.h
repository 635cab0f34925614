#pragma once

#include <QDialog>
#include <string>

class QComboBox;
class QDoubleSpinBox;
class QLabel;

namespace Helmsway {

/// Asks what is to go wrong with which line.
class FaultDialog : public QDialog {
  Q_OBJECT

 public:
  explicit FaultDialog(QWidget* parent = nullptr);

  /// The fault as an action of a script: "instrument fault late "MOVE S " 5".
  std::string Action() const;

 private:
  void ShowKind();

  QComboBox* kind_ = nullptr;
  QComboBox* line_ = nullptr;
  QDoubleSpinBox* seconds_ = nullptr;
  QLabel* meaning_ = nullptr;
};

}  // namespace Helmsway
