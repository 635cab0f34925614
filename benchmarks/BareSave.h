#pragma once

#include <string>
#include <string_view>

/// What any save that outlives a power cut has to ask of the system, and nothing else.
namespace Helmsway::Benchmarks {

enum class Flush { Yes, No };

/// Writes the bytes beside the file, flushes them, renames them over the file, and flushes the folder. Throws
/// `std::system_error`.
void BareSave(const std::string& path, std::string_view bytes, Flush flush);

/// The same, but first reads the file that is there, and asks for its stamp again ahead of the rename, as is needed to
/// lose no edit of another program.
void BareSaveWithRead(const std::string& path, std::string_view bytes, Flush flush);

}  // namespace Helmsway::Benchmarks
