#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace Helmsway {

/// `json` on one line, without blanks, as the library itself writes it. A byte 0xNN that isn't UTF-8, which the library
/// can't write, becomes the escape `\udcNN`. No text that is UTF-8 gives that escape, so that each text comes out
/// differently, and the bytes can be had back.
std::string JsonText(const nlohmann::ordered_json& json);

}  // namespace Helmsway
