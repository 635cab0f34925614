#pragma once

#include <QString>
#include <cstddef>
#include <string>
#include <vector>

#include "bench/desktop/panes/Tone.h"
#include "bench/instrument/MemoryComparison.h"

namespace Helmsway {

/// What became of a save that the operator agreed to.
struct SaveResult {
  std::size_t headsPlanned = 0;  ///< that the calibration concerns
  std::size_t headsWritten = 0;
  std::size_t headsOff = 0;     ///< whose position in the file isn't the one that the number gives
  bool markNotWritten = false;  ///< of the key that says that S is calibrated
  std::string whyNotWritten;    ///< of the first write that failed; may be empty
  std::string whyNotRead;       ///< of the first read that failed; empty when none did
  std::string whyNoHeads;       ///< in words, when the file held no head to be written

  std::size_t linesPlanned = 0;  ///< to the instrument, when nothing goes wrong
  std::size_t linesLeftOut = 0;  ///< that the add-in could not work out, by the heads that the file has
  std::size_t linesTaken = 0;
  std::string brokenBy;          ///< how the line after those ended, with its reason; empty when none broke it off
  std::size_t linesSkipped = 0;  ///< since a stop was requested
  bool linkLost = false;         ///< at some time of the save; it may have come back
  bool memorySaved = false;      ///< the instrument has made the values permanent

  std::string notHomed;  ///< how HOME S of the check before the question ended; empty when well, or without a check

  bool fileDiffers = false;                   ///< from what the save has written
  std::size_t valuesCompared = 0;             ///< S positions, one for each class of heads
  std::vector<MemoryDifference> differences;  ///< between the file and the instrument's memory
  std::string doubt;                          ///< about the number that was saved, in words; may be empty
  bool inCopy = false;                        ///< the files are a copy of the window's own
};

struct Verdict {
  QString text;  ///< a sign and words
  Tone tone = Tone::Plain;
};

/// Good only if S values were written and compared, every write took place, every line was taken, and there is no doubt
/// about the number. Otherwise the words say what didn't happen, and why.
Verdict VerdictOf(const SaveResult& result);

}  // namespace Helmsway
