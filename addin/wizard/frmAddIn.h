#pragma once

#include <cstdint>
#include <memory>

#include "addin/sequences/SequenceContext.h"
#include "addin/wizard/Button.h"
#include "addin/wizard/EnableSets.h"
#include "forms/Form.h"

namespace OrvelCalibrateS {

/// The wizard: the form, its handlers and its flags. Each load of the form is a new object, with the controls as
/// designed and the flags False; the shared records belong to the library and live on.
///
/// A handler keeps the object alive until it returns, so that the host may end the form in the middle of a command.
class frmAddIn : public std::enable_shared_from_this<frmAddIn> {
 public:
  /// Creates the form, as designed. `files`, `records` and `sending` must outlive it.
  static std::shared_ptr<frmAddIn> Make(const IniFiles& files, SharedRecords& records, SendState& sending);

  frmAddIn(const frmAddIn&) = delete;
  frmAddIn& operator=(const frmAddIn&) = delete;
  ~frmAddIn() = default;

  /// Applies the captions of the machine's language.
  void Form_Load();
  /// Runs Form_Unload: reports to the device link that the add-in is inactive, drops the host's objects and closes the
  /// form. Does nothing for a form that has been unloaded. From its start on the operator can't reach anything any
  /// more.
  void Unload();
  /// The same, for a host that takes its connection back: reports the add-in as inactive and drops the connection
  /// before it runs Form_Unload.
  void DropConnection();
  bool Loaded() const { return loaded_; }

  forms::Form& Form() { return form_; }
  HostChannel& Host() { return host_; }

  /// Sets the three flags to false. Runs when a selection changes and for the host's `LoadDefaults`.
  void ResetProgressFlags() { flags_ = ProgressFlags(); }
  const ProgressFlags& Flags() const { return flags_; }

  /// The host's `SaveChanges`: the save with its question, from any state of the wizard.
  void SaveChanges();

  /// Handles a press of the button. In skip mode. While a line is under way only the two Stop buttons have an effect.
  void cmdButton_Click(std::int16_t index);

 private:
  friend struct WizardFlow;

  frmAddIn(const IniFiles& files, SharedRecords& records, SendState& sending);

  void ConnectHandlers();
  void Form_Unload();

  void chkStageEmpty_Click();
  void chkToolInstalled_Click();
  void chkToolUninstalled_Click();
  void picFrame_Click();

  void SetButtonEnables(const ButtonEnables& enables);
  static void SetButtonEnabled(forms::Control& button, bool enabled);

  void RetrieveConfiguration();
  void FillSelectionLists();
  void RegisterTeachTool();
  void WriteStageTexts();
  void WriteEjectingText();
  void ClearCheckBoxes();
  void HomeAllAxes();
  void MoveToCalibrationLocation();
  void JogUp();
  void JogDown();
  void CollectTip();
  void EjectTip();
  void CollectHead();
  void EjectHead();
  void EjectHeadToStage();
  void EjectTeachTool();
  void VerifyAndSave();
  bool VerifyCalibratedPosition();
  void ShowReferencePointHint();
  void RequestStop();
  void ForgetRack() { flags_.AtRack = false; }

  forms::Control& cmdButton(Button button) { return form_.Get("cmdButton", IndexOf(button)); }
  forms::CheckBox& Check(std::string_view name) { return form_.Get<forms::CheckBox>(name); }

  const IniFiles& files_;
  forms::Form form_;
  HostChannel host_;
  ProgressFlags flags_;
  SequenceContext context_;
  bool loaded_ = true;
};

}  // namespace OrvelCalibrateS
