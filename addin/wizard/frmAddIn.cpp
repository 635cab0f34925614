#include "addin/wizard/frmAddIn.h"

#include <string>
#include <utility>

#include "addin/base/Steps.h"
#include "addin/language/Language.h"
#include "addin/sequences/CollectHead.h"
#include "addin/sequences/CollectTip.h"
#include "addin/sequences/EjectHead.h"
#include "addin/sequences/EjectHeadToStage.h"
#include "addin/sequences/EjectTeachTool.h"
#include "addin/sequences/EjectTip.h"
#include "addin/sequences/HomeAll.h"
#include "addin/sequences/JogSAxis.h"
#include "addin/sequences/MoveToCalibrationLocation.h"
#include "addin/sequences/TeachTool.h"
#include "addin/wizard/FillSelectionLists.h"
#include "addin/wizard/SaveSAxisPositions.h"
#include "addin/wizard/WizardFlow.h"
#include "addin/wizard/frmAddInDesign.h"

namespace OrvelCalibrateS {
namespace {

constexpr bool IsStop(Button button) { return button == Button::StopEjecting || button == Button::Stop; }

constexpr std::int16_t captionKey = 101;

/// A message box whose text is always the same.
struct Message {
  std::string_view title;
  std::string_view text;
  forms::MessageButtons buttons;
  forms::MessageIcon icon;
};

constexpr Message ReferencePointHint{"Calibrate S Axis Reference Point",
                                     "To determine the S Axis reference point, click the Up and Down buttons\r\n"
                                     "to move the upper part of the teach tool until the lower edge\r\n"
                                     "completely covers the silver indication ring beneath it.",
                                     forms::MessageButtons::Ok, forms::MessageIcon::None};

constexpr Message VerifyQuestion{"Calibrate Syringe Axis",
                                 "Please visually check the teach tool calibration position to ensure that\r\n"
                                 "the lower edge of the upper part of the teach tool \r\n"
                                 "completely covers the silver indication ring beneath it.\r\n"
                                 "\r\n"
                                 "Is the calibration position correct?",
                                 forms::MessageButtons::YesNo, forms::MessageIcon::None};

}  // namespace

std::shared_ptr<frmAddIn> frmAddIn::Make(const IniFiles& files, SharedRecords& records, SendState& sending) {
  // Not make_shared: the constructor is private.
  std::shared_ptr<frmAddIn> form(new frmAddIn(files, records, sending));
  form->ConnectHandlers();
  return form;
}

frmAddIn::frmAddIn(const IniFiles& files, SharedRecords& records, SendState& sending)
    : files_(files),
      form_(FormDesignCaption, FormDesign()),
      host_(files, sending),
      context_{{files, records},
               host_,
               {form_.Get<forms::ComboBox>("cboCollectStep"), form_.Get<forms::ComboBox>("cboNestType"),
                form_.Get<forms::ComboBox>("cboHeadType"), form_.Get<forms::ComboBox>("cboPosition"),
                form_.Get<forms::ComboBox>("cboTipRack"), form_.Get<forms::ComboBox>("cboTipType"),
                form_.Get<forms::TextBox>("txtCurrentCollect")},
               flags_,
               form_} {}

void frmAddIn::Form_Load() {
  ApplyLanguage(form_, files_);
  form_.SetCaption(LanguageText(captionKey, files_));
}

void frmAddIn::Unload() {
  // First, so that the host finds the form gone in everything it does during the calls below.
  if (std::exchange(loaded_, false)) Form_Unload();
}

void frmAddIn::DropConnection() {
  if (!std::exchange(loaded_, false)) return;
  Skip([&] { host_.WriteAddInActive(false); });
  host_.ParentConnection = {};
  Form_Unload();
}

void frmAddIn::Form_Unload() {
  Skip([&] { host_.WriteAddInActive(false); });
  host_.StatusPanel = {};
  host_.FormParent = {};
  host_.ParentConnection = {};
  form_.Close();
}

void frmAddIn::ConnectHandlers() {
  const auto handler = [this](auto operation) {
    return [form = weak_from_this(), operation] {
      if (const auto alive = form.lock(); alive && alive->Loaded()) operation(*alive);
    };
  };
  for (const auto& control : form_.Controls()) {
    if (control->Kind() != forms::ControlKind::CommandButton) continue;
    const std::int16_t index = control->Index().value_or(forms::NoIndex);
    control->OnClick = handler([index](frmAddIn& form) { form.cmdButton_Click(index); });
  }
  Check("chkStageEmpty").OnClick = handler([](frmAddIn& form) { form.chkStageEmpty_Click(); });
  Check("chkToolInstalled").OnClick = handler([](frmAddIn& form) { form.chkToolInstalled_Click(); });
  Check("chkToolUninstalled").OnClick = handler([](frmAddIn& form) { form.chkToolUninstalled_Click(); });
  form_.Get("picFrame").OnClick = handler([](frmAddIn& form) { form.picFrame_Click(); });
  for (const std::string_view list : {"cboNestType", "cboHeadType", "cboPosition", "cboTipRack", "cboTipType"}) {
    form_.Get(list).OnClick = handler([](frmAddIn& form) { form.ResetProgressFlags(); });
  }
}

void frmAddIn::cmdButton_Click(std::int16_t index) {
  // This press may be nested in a send. Only a Stop may act then: any other press could take a Stop back.
  const Button button{index};
  if (host_.LineUnderWay() && !IsStop(button)) return;
  Skip([&] { host_.WriteStopRequested(false); });
  WizardFlow::Press(*this, button);
}

void frmAddIn::chkStageEmpty_Click() {
  cmdButton(Button::ContinueToEject).SetEnabled(Check("chkStageEmpty").Value() != 0);
}

void frmAddIn::chkToolInstalled_Click() {
  if (Check("chkToolInstalled").Value() == 1) Check("chkToolUninstalled").SetValue(0);
  cmdButton(Button::ContinueWithTool)
      .SetEnabled(Check("chkToolInstalled").Value() != 0 || Check("chkToolUninstalled").Value() != 0);
}

void frmAddIn::chkToolUninstalled_Click() {
  if (Check("chkToolUninstalled").Value() == 1) Check("chkToolInstalled").SetValue(0);
  cmdButton(Button::ContinueWithTool)
      .SetEnabled(Check("chkToolInstalled").Value() != 0 || Check("chkToolUninstalled").Value() != 0);
}

void frmAddIn::picFrame_Click() {
  Skip([&] { host_.SetFocus(); });
}

void frmAddIn::SetButtonEnables(const ButtonEnables& enables) {
  for (std::size_t i = 0; i < DrivenButtons.size(); ++i) SetButtonEnabled(cmdButton(DrivenButtons[i]), enables[i]);
}

void frmAddIn::SetButtonEnabled(forms::Control& button, bool enabled) {
  button.SetBackColor(enabled ? forms::SystemColor::WindowBackground : forms::SystemColor::ButtonFace);
  button.SetEnabled(enabled);
}

void frmAddIn::RetrieveConfiguration() {
  Skip([&] { host_.WriteStatus("Retrieving configuration settings from Marivane"); });
  host_.SendDeviceCommand(Command::Rev());
  bool stopRequested = false;
  Put(stopRequested, [&] { return host_.StopRequested(); });
  if (!stopRequested) FillSelectionLists();
  Skip([&] { host_.WriteStatus(""); });
}

void frmAddIn::FillSelectionLists() { OrvelCalibrateS::FillSelectionLists(context_); }

void frmAddIn::RegisterTeachTool() {
  OrvelCalibrateS::RegisterTeachTool(files_, FindTeachTool(context_.Configuration, FailureMode::Skip),
                                     FailureMode::Skip);
}

void frmAddIn::WriteStageTexts() {
  const std::string stage =
      context_.Configuration.Records.DeviceType.HasXAxis ? "STAGE POSITION 6" : "STAGE POSITION 2";
  form_.Get("lblContinue", 0)
      .SetCaption("The pipette head that is currently installed in the pipette module will be ejected to " + stage +
                  ".");
  form_.Get("lblContinue", 1)
      .SetCaption("Please confirm that " + stage + " is empty and click 'Continue' to eject the pipette head.");
  form_.Get("chkStageEmpty").SetCaption(stage + " is empty");
}

void frmAddIn::WriteEjectingText() {
  const bool hasXAxis = context_.Configuration.Records.DeviceType.HasXAxis;
  form_.Get("lblEjecting")
      .SetCaption(hasXAxis ? "Ejecting the pipette head to STAGE POSITION 6..."
                           : "Ejecting the pipette head to STAGE POSITION 2...");
}

void frmAddIn::ClearCheckBoxes() {
  for (const std::string_view box : {"chkStageEmpty", "chkToolInstalled", "chkToolUninstalled"}) {
    Skip([&] { Check(box).SetValue(0); });
  }
}

void frmAddIn::HomeAllAxes() {
  Skip([&] { HomeAll(context_); });
  flags_.Homed = true;
}

void frmAddIn::MoveToCalibrationLocation() { OrvelCalibrateS::MoveToCalibrationLocation(context_); }

void frmAddIn::JogUp() { JogSAxis(context_, Jog::Up); }
void frmAddIn::JogDown() { JogSAxis(context_, Jog::Down); }
void frmAddIn::CollectTip() { OrvelCalibrateS::CollectTip(context_); }
void frmAddIn::EjectTip() { OrvelCalibrateS::EjectTip(context_); }
void frmAddIn::CollectHead() { OrvelCalibrateS::CollectHead(context_); }
void frmAddIn::EjectHead() { OrvelCalibrateS::EjectHead(context_); }
void frmAddIn::EjectHeadToStage() { OrvelCalibrateS::EjectHeadToStage(context_); }
void frmAddIn::EjectTeachTool() { OrvelCalibrateS::EjectTeachTool(context_); }

void frmAddIn::VerifyAndSave() {
  // A verification that fails counts as passed; the save still asks its own question before it writes the file.
  if (Passes([&] { return VerifyCalibratedPosition(); })) {
    SaveSAxisPositions(context_);
  } else {
    ShowReferencePointHint();
  }
}

bool frmAddIn::VerifyCalibratedPosition() {
  host_.WriteStatus("Verifying calibrated position");
  host_.SendDeviceCommand(Command::HomeS());
  JogSAxis(context_, Jog::None);
  const forms::MessageAnswer answer =
      form_.ShowMessage(VerifyQuestion.title, VerifyQuestion.text, VerifyQuestion.buttons, VerifyQuestion.icon);
  host_.WriteStatus("");
  return answer == forms::MessageAnswer::Yes;
}

void frmAddIn::ShowReferencePointHint() {
  form_.ShowMessage(ReferencePointHint.title, ReferencePointHint.text, ReferencePointHint.buttons,
                    ReferencePointHint.icon);
}

void frmAddIn::RequestStop() { host_.WriteStopRequested(true); }

void frmAddIn::SaveChanges() { SaveSAxisPositions(context_); }

}  // namespace OrvelCalibrateS
