#pragma once

/// The signals that ask the program to end: they end the run behind the action that is under way, so that nothing of it
/// is left behind.
namespace Helmsway::Interruption {

/// From now on SIGINT and SIGTERM are only noted. A reader of our output who goes away is from now on a failed write.
void Catch();

/// A signal has been noted.
bool Requested();

/// Ends the program by the signal that was noted, if there was one.
void PassOn();

}  // namespace Helmsway::Interruption
