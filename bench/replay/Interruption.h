#pragma once

#include <filesystem>

/// The signals that ask the program to end: SIGINT, SIGTERM, SIGQUIT, and SIGHUP unless it is ignored, as under nohup.
///
/// They are taken by a thread that does nothing but wait for them. It works whatever the rest of the program is doing:
/// waiting for a script, for a reader of the trace or for a disk, or computing. Handlers would have to wake the main
/// thread from each call that it may wait in, and every loop would have to ask for them.
namespace Helmsway::Interruption {

/// From now on such a signal removes what `RemoveAtEnd` has named and ends the program by that same signal. A reader of
/// our output that goes away is from now on a failed write. Call it before any other thread is started, and once.
/// Throws `std::system_error` when there can be no thread.
void Watch();

/// A signal has come, and the program is about to end. What is said or written from now on may come of files that have
/// been removed already.
bool Requested() noexcept;

/// Waits for the end that a signal has asked for; returns at once if none has come.
void PassOn();

/// While one of these lives, a signal doesn't end the program: for a write that is not to be broken off. A second
/// signal ends it all the same. They may be nested. Wait for nothing meanwhile that may never come.
class Shield {
 public:
  Shield();
  Shield(const Shield&) = delete;
  Shield& operator=(const Shield&) = delete;
  ~Shield();
};

/// A file or a folder that is to be removed, with all that it holds, when a signal ends the program. Make it, and name
/// it, under one `Shield`.
void RemoveAtEnd(const std::filesystem::path& path);

/// It has been removed, or is to stay.
void Forget(const std::filesystem::path& path);

}  // namespace Helmsway::Interruption
