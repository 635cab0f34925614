#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "addin/base/Steps.h"
#include "addin/config/AxisRecord.h"
#include "addin/config/Configuration.h"
#include "addin/config/HeadType.h"

/// The S value of a calibration, in steps of the S axis: where it comes from, where it is in between, where it goes.
namespace OrvelCalibrateS {

/// The first serial-dilute head of the list: its S position is the value on record. None when the list has no such
/// head; `mode` says what a list without an end means.
std::optional<HeadType> FindHeadOnRecord(const Configuration& configuration, FailureMode mode);

/// The value on record: that head's S position with the teach tool in its place. Not rounded.
double SValueOnRecord(const HeadType& head, const AxisRecord& axisS);

/// The value on the form, that the operator has reached. 0 for an empty text.
double SValueOnForm(std::string_view txtCurrentCollect);

/// The S position that a calibration gives a head: its teach tool offset, in the move direction of the S axis, from the
/// value on the form. Fails when it is outside 32 bits.
std::int32_t CalibratedSPosition(const HeadType& head, const AxisRecord& axisS, double valueOnForm);

}  // namespace OrvelCalibrateS
