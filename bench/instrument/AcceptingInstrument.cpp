#include "bench/instrument/AcceptingInstrument.h"

namespace Helmsway {

Answer AcceptingInstrument::Execute(std::string_view /*line*/) { return {}; }

const CalibrationValues& AcceptingInstrument::CalibrationMemory() const { return nothing_; }

}  // namespace Helmsway
