#include "addin/wizard/WizardFlow.h"

#include "addin/base/Steps.h"

namespace OrvelCalibrateS {
namespace {

using Action = WizardFlow::Action;

constexpr Action Show(std::string_view panel) { return {.kind = Action::Kind::Show, .panel = panel}; }
constexpr Action Hide(std::string_view panel) { return {.kind = Action::Kind::Hide, .panel = panel}; }
constexpr Action Enable(const ButtonEnables& set) { return {.kind = Action::Kind::Enable, .enables = &set}; }
constexpr Action Call(void (frmAddIn::*operation)()) { return {.kind = Action::Kind::Call, .operation = operation}; }

}  // namespace

std::span<const WizardFlow::Transition> WizardFlow::Transitions() {
  using enum State;
  using enum Guard;
  using F = frmAddIn;
  // clang-format off
  static constexpr std::array transitions{
      Transition{Initial, Button::ContinueFromStart, None,
                 {Call(&F::RetrieveConfiguration), Show("fraWarning"), Hide("fraInitial")}, Warning},
      Transition{Warning, Button::ContinueWithTool, ToolInstalled,
                 {Hide("fraWarning"), Hide("fraEject"), Hide("fraDoEject"), Hide("fraInitial"),
                  Show("fraMove"), Show("fraTest"),
                  Call(&F::RegisterTeachTool), Call(&F::FillSelectionLists)}, Main},
      Transition{Warning, Button::ContinueWithTool, ToolUninstalled,
                 {Hide("fraWarning"), Show("fraEject"), Hide("fraDoEject"), Hide("fraInitial"),
                  Hide("fraMove"), Hide("fraTest"),
                  Call(&F::WriteStageTexts)}, EjectPrompt},
      Transition{EjectPrompt, Button::ContinueToEject, StageEmpty,
                 {Call(&F::WriteEjectingText), Show("fraDoEject"), Hide("fraEject"), Call(&F::EjectHeadToStage)}, Ejecting},
      Transition{Ejecting, Returned, None,
                 {Show("fraEjectDone"), Hide("fraDoEject")}, EjectDone},
      Transition{EjectDone, Button::ContinueAfterEject, None,
                 {Call(&F::ClearCheckBoxes), Show("fraWarning"), Hide("fraEjectDone")}, Warning},
      Transition{Main, Button::EjectTeachTool, None,
                 {Enable(EnableSets::AllOff), Call(&F::EjectTeachTool), Enable(EnableSets::NoHead),
                  Show("fraWarning"), Hide("fraEject"), Hide("fraDoEject"), Hide("fraInitial"),
                  Hide("fraMove"), Hide("fraTest")}, Warning},
      Transition{Main, Button::Start, None,
                 {Call(&F::ShowReferencePointHint), Enable(EnableSets::AllOff),
                  Call(&F::MoveToCalibrationLocation), Enable(EnableSets::AtCalibration)}, Main},
      Transition{Main, Button::Up, None,
                 {Enable(EnableSets::AllOff), Call(&F::JogUp), Enable(EnableSets::AtCalibration)}, Main},
      Transition{Main, Button::Down, None,
                 {Enable(EnableSets::AllOff), Call(&F::JogDown), Enable(EnableSets::AtCalibration)}, Main},
      Transition{Main, Button::Save, None,
                 {Enable(EnableSets::AllOff), Call(&F::VerifyAndSave), Enable(EnableSets::AtCalibration)}, Main},
      Transition{Main, Button::HomeAll, None,
                 {Enable(EnableSets::AllOff), Call(&F::HomeAllAxes), Enable(EnableSets::AfterHome)}, Main},
      Transition{Main, Button::CollectTip, None,
                 {Enable(EnableSets::AllOff), Call(&F::CollectTip), Enable(EnableSets::TipOn)}, Main},
      Transition{Main, Button::EjectTip, None,
                 {Enable(EnableSets::AllOff), Call(&F::EjectTip), Enable(EnableSets::HeadReady)}, Main},
      Transition{Main, Button::EjectHead, None,
                 {Enable(EnableSets::AllOff), Call(&F::EjectHead), Call(&F::ForgetRack),
                  Enable(EnableSets::NoHead)}, Main},
      Transition{Main, Button::CollectHead, None,
                 {Enable(EnableSets::AllOff), Call(&F::CollectHead), Call(&F::ForgetRack),
                  Enable(EnableSets::HeadReady)}, Main},
      Transition{Main, Button::Stop, None, {Call(&F::RequestStop)}, Main},
      Transition{Ejecting, Button::StopEjecting, None, {Call(&F::RequestStop)}, Ejecting},
  };
  // clang-format on
  return transitions;
}

void WizardFlow::Press(frmAddIn& form, Button button) {
  for (const Transition& transition : Transitions()) {
    if (transition.event != button || !Holds(form, transition.guard)) continue;
    Perform(form, transition);
    return;
  }
}

bool WizardFlow::Holds(frmAddIn& form, Guard guard) {
  switch (guard) {
    case Guard::None:
      return true;
    case Guard::ToolInstalled:
      return form.Check("chkToolInstalled").Value() == 1;
    case Guard::ToolUninstalled:
      return form.Check("chkToolUninstalled").Value() == 1;
    case Guard::StageEmpty:
      return form.Check("chkStageEmpty").Value() == 1;
  }
  return false;
}

void WizardFlow::Perform(frmAddIn& form, const Transition& transition) {
  for (const Action& action : transition.actions) {
    Skip([&] { Perform(form, action); });
  }
  if (transition.from == transition.to) return;
  for (const Transition& next : Transitions()) {
    if (next.from == transition.to && next.event == Returned) Perform(form, next);
  }
}

void WizardFlow::Perform(frmAddIn& form, const Action& action) {
  switch (action.kind) {
    case Action::Kind::None:
      return;
    case Action::Kind::Show:
      return form.Form().Get(action.panel).SetVisible(true);
    case Action::Kind::Hide:
      return form.Form().Get(action.panel).SetVisible(false);
    case Action::Kind::Enable:
      return form.SetButtonEnables(*action.enables);
    case Action::Kind::Call:
      return (form.*action.operation)();
  }
}

}  // namespace OrvelCalibrateS
