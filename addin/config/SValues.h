#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "addin/base/Steps.h"
#include "addin/config/AxisRecord.h"
#include "addin/config/Configuration.h"
#include "addin/config/HeadType.h"

/// The S value of a calibration, in steps of the S axis: on record, on the form, and as a head's calibrated position.
namespace OrvelCalibrateS {

/// The first serial-dilute head of the list: its S position is the value on record. None when the list has no such
/// head; `mode` decides whether a list without an end is a failure.
std::optional<HeadType> FindHeadOnRecord(const Configuration& configuration, FailureMode mode);

/// The value on record: that head's S position, converted to the teach tool. Not rounded.
double SValueOnRecord(const HeadType& head, const AxisRecord& axisS);

/// The value on the form, as reached by the operator. 0 for an empty text.
double SValueOnForm(std::string_view txtCurrentCollect);

/// The S position that a calibration sets for a head: the value on the form plus the head's teach tool offset in the
/// move direction of the S axis. Fails when it is outside 32 bits.
std::int32_t CalibratedSPosition(const HeadType& head, const AxisRecord& axisS, double valueOnForm);

}  // namespace OrvelCalibrateS
