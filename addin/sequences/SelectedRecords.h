#pragma once

#include <string>

#include "addin/config/PlateType.h"
#include "addin/config/Position.h"
#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// The item number of the entry that is selected in the list; a step that fails when none is.
std::string SelectedItem(const forms::ComboBox& list);

/// Load what the operator has picked. Without a selection the load doesn't happen: a shared record keeps what it held,
/// and a local one is empty.
void LoadSelectedHead(SequenceContext& context);
void LoadSelectedTip(SequenceContext& context);
void LoadSelectedNest(SequenceContext& context);
Position SelectedPosition(const SequenceContext& context);
PlateType SelectedTipRack(const SequenceContext& context);

/// The working value as a number, in S steps.
double CurrentSteps(const SequenceContext& context);

/// Whether Z collision detection is in use, read anew from the file; False when that can't be told.
bool ReadZCollision(const IniFiles& files);

/// Runs `HomeAll` unless that has been done; `Homed` is True afterwards, however it ended. In skip mode.
void HomeUnlessHomed(SequenceContext& context);

}  // namespace OrvelCalibrateS
