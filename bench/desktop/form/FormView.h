#pragma once

#include <QWidget>
#include <cstdint>
#include <memory>
#include <vector>

#include "bench/desktop/form/FormControl.h"
#include "bench/desktop/form/FormFocus.h"
#include "forms/Surface.h"

class QKeyEvent;
class QMouseEvent;

namespace Helmsway {

class FocusMark;

/// What the operator does to the form's controls; whoever implements it passes it on to the form.
class IFormHands {
 public:
  virtual void Click(forms::ControlId control) = 0;
  virtual void SetChecked(forms::ControlId checkBox, bool checked) = 0;
  virtual void Pick(forms::ControlId list, std::int32_t entry) = 0;

 protected:
  ~IFormHands() = default;
};

/// Draws a form with native widgets, at the size that its texts need. Each widget's object name is its control's name,
/// with "_7" behind it for the control of index 7.
///
/// A panel that has a button with an arrow up and one with an arrow down can be worked with the arrow keys.
class FormView final : public QWidget {
  Q_OBJECT

 public:
  FormView(forms::ISurface& surface, IFormHands& hands, QWidget* parent = nullptr);
  Q_DISABLE_COPY_MOVE(FormView)
  ~FormView() override;

  /// The form has changed. To be called for each change, also while one of the hands' functions is under way.
  void Changed(forms::ControlId control, forms::Aspect aspect);
  /// Marks the control of that name as showing what may not be so, for the reason given; empty takes the mark away.
  void ShowDoubt(const QString& name, const QString& why);
  /// The form is gone: nothing is asked of the surface any more, and the view shows its last state, disabled.
  void Detach();

  /// What the form takes at its scale; it is drawn at that size in a larger view too.
  QSize sizeHint() const override { return formSize_; }
  QSize minimumSizeHint() const override { return formSize_; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  struct JogPanel {
    forms::ControlId panel = forms::NoControl;
    forms::ControlId up = forms::NoControl;
    forms::ControlId down = forms::NoControl;
  };

  FormControl& At(forms::ControlId control) { return controls_[static_cast<std::size_t>(control)]; }
  void Connect(const FormControl& control);
  void FindJogPanels();
  void LayOut();
  void Paint(const FormControl& control);
  void PaintAll();

  void Click(forms::ControlId control);
  void SetChecked(forms::ControlId checkBox, bool checked);
  void Pick(forms::ControlId list, std::int32_t entry);
  void SetVisible(FormControl& control);
  void SetEnabled(FormControl& control);

  const FormControl* Watched(const QObject* widget) const;
  bool TakesMouse(const FormControl& control, QMouseEvent& event);
  bool TakesKey(const FormControl& control, QKeyEvent& event);
  bool TakesArrow(const FormControl& control, QKeyEvent& event);

  forms::ISurface* surface_;  ///< null when the form is gone
  IFormHands& hands_;
  std::vector<FormControl> controls_;
  std::vector<JogPanel> jogPanels_;
  std::unique_ptr<FormFocus> focus_;
  FocusMark* mark_;
  QSize formSize_;
  int clicksUnderWay_ = 0;
  bool backgroundPressed_ = false;
};

}  // namespace Helmsway
