#pragma once

#include <chrono>
#include <string>

#include "bench/host/AtomicFile.h"
#include "bench/host/FileStamp.h"

/// Whether another program may be in the middle of writing a file.
///
/// Such a program shows in the file's times: what it writes sets both of them, to the same. Our own writes leave the
/// time of the contents a little earlier than that of the entry, so that no writer of ours waits for another one.
namespace Helmsway {

/// How long a file that another program has written must have stayed the same before it counts as whole, and how long a
/// file must have been away before it counts as missing: an editor may rename the old one before it writes the new one.
inline constexpr std::chrono::milliseconds Stillness{50};

enum class Reading {
  Present,
  Missing,
  Restless,  ///< another program kept changing it
  Failed,    ///< `errno` says why
};

/// The file once it is still, waiting for at most `patience`, and no longer than until `isGivenUp`, if there is one,
/// says so. `contents` stays as it was but for `Present`.
Reading ReadStillFile(int folder, const std::string& name, std::chrono::milliseconds patience, FileContents& contents,
                      bool (*isGivenUp)() noexcept = nullptr);

/// To be called when all bytes are written: the file counts as whole from then on. Without effect, but for waiting
/// writers, where the file belongs to another user.
void MarkAsWhole(int descriptor);

/// The same for a copy that this program has made with means of its own.
void MarkAsWhole(const std::string& path);

/// Whether another program has the file open for writing, as far as the system says so: it does on this computer's own
/// disks, to the file's owner. `descriptor` must be one for reading alone.
bool IsOpenForWriting(int descriptor);

}  // namespace Helmsway
