#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A configuration file as large as one likes, the same at each run: what a catalogue of heads looks like.
namespace Helmsway::Benchmarks {

inline constexpr std::string_view ItemSection = "HeadType";

/// `count` item lines of about 105 bytes in one section, between two short sections.
std::string ItemFile(std::size_t count);

/// "Item1" to "Item<count>", in this order.
std::vector<std::string> ItemKeys(std::size_t count);

}  // namespace Helmsway::Benchmarks
