#pragma once

#include "addin/config/Configuration.h"
#include "addin/device/HostChannel.h"
#include "forms/Form.h"

namespace OrvelCalibrateS {

/// The operator's selections, and the calibration's working value.
struct Selections {
  forms::ComboBox& cboCollectStep;
  forms::ComboBox& cboNestType;
  forms::ComboBox& cboHeadType;
  forms::ComboBox& cboPosition;
  forms::ComboBox& cboTipRack;
  forms::ComboBox& cboTipType;
  forms::TextBox& txtCurrentCollect;  ///< the S position in whole steps, as text
};

/// How far the operator has come since the selection last changed.
struct ProgressFlags {
  bool Homed = false;            ///< `HomeAll` has run
  bool AtRack = false;           ///< `MoveToRack` has run, and no head has changed since
  bool LoadPromptShown = false;  ///< the operator has seen the load requirements
};

/// Everything that a sequence needs.
struct SequenceContext {
  OrvelCalibrateS::Configuration Configuration;
  HostChannel& Host;
  OrvelCalibrateS::Selections Selections;
  ProgressFlags& Flags;
  forms::Form& Form;  ///< for message boxes
};

}  // namespace OrvelCalibrateS
