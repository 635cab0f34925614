#pragma once

#include <string>

#include "addin/config/PlateType.h"
#include "addin/config/Position.h"
#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// The item number of the entry that is selected in the list; a step that fails when no entry is selected.
std::string SelectedItem(const forms::ComboBox& list);

/// Load the records that the operator has picked. Without a selection nothing is loaded: a shared record keeps its
/// content, and a local one is empty.
void LoadSelectedHead(SequenceContext& context);
void LoadSelectedTip(SequenceContext& context);
void LoadSelectedNest(SequenceContext& context);
Position SelectedPosition(const SequenceContext& context);
PlateType SelectedTipRack(const SequenceContext& context);

/// The working value as a number, in S steps.
double CurrentSteps(const SequenceContext& context);

/// Whether Z collision detection is in use, read again from the file; false when it can't be read.
bool ReadZCollision(const IniFiles& files);

/// Runs `HomeAll` unless that has been done; `Homed` is true afterwards, even if `HomeAll` failed. In skip mode.
void HomeUnlessHomed(SequenceContext& context);

}  // namespace OrvelCalibrateS
