#include "bench/desktop/panes/SaveVerdict.h"

#include <algorithm>

namespace Helmsway {
namespace {

QString Text(const std::string& text) { return QString::fromStdString(text); }

/// Why heads were not written.
QString Because(const SaveResult& result) {
  if (!result.whyNotWritten.empty()) return Text(result.whyNotWritten);
  if (!result.whyNotRead.empty()) return QStringLiteral("the heads could not be read: ") + Text(result.whyNotRead);
  return QStringLiteral("the add-in has not written them");
}

bool MemoryAgrees(const SaveResult& result) { return result.valuesCompared > 0 && result.differences.empty(); }

/// Why nothing, or not all, has got into the file; empty when all has.
QString FileTrouble(const SaveResult& result) {
  if (result.headsPlanned == 0 && result.headsWritten == 0) {
    return QStringLiteral("Not saved: ") +
           (result.whyNoHeads.empty() ? QStringLiteral("no head was written") : Text(result.whyNoHeads));
  }
  if (result.headsWritten == 0) {
    // The last line makes permanent what those before it have brought; alone it brings nothing.
    const bool valuesTaken = result.memorySaved && result.linesTaken > 1;
    const QString instrument =
        valuesTaken ? QStringLiteral(". The instrument has taken the new values all the same") : QString();
    return QStringLiteral("Not saved: ") + Because(result) + instrument;
  }
  if (result.headsWritten < result.headsPlanned) {
    return QStringLiteral("Saved in part: %1 of %2 heads were not written: %3")
        .arg(result.headsPlanned - result.headsWritten)
        .arg(result.headsPlanned)
        .arg(Because(result));
  }
  if (result.markNotWritten) {
    return QStringLiteral("Saved in part: the mark that S is calibrated is not in Marivane.ini: ") + Because(result);
  }
  return {};
}

/// Why not all lines went through; empty when all did.
QString InstrumentTrouble(const SaveResult& result) {
  QString why;
  if (!result.brokenBy.empty()) {
    why = QStringLiteral("line %1 of %2 %3")
              .arg(result.linesTaken + 1)
              .arg(std::max(result.linesPlanned, result.linesTaken + 1))
              .arg(Text(result.brokenBy));
  } else if (result.linesSkipped > 0) {
    why = QStringLiteral("a stop was requested, %1 of %2 lines were not sent")
              .arg(result.linesSkipped)
              .arg(result.linesSkipped + result.linesTaken);
  } else if (result.linkLost && !result.memorySaved) {
    why = QStringLiteral("the link was lost");
  } else if (result.linesTaken < result.linesPlanned || (result.linesPlanned > 0 && !result.memorySaved)) {
    why = QStringLiteral("not all lines were sent");
  }
  if (why.isEmpty()) return why;
  // The answer was lost, not the line; or the values are those of an earlier save.
  if (MemoryAgrees(result)) {
    return QStringLiteral(
               "Saved in the file, but the upload broke off: %1. The instrument's memory agrees all the same")
        .arg(why);
  }
  return QStringLiteral("Saved in the file, not in the instrument: ") + why;
}

}  // namespace

Verdict VerdictOf(const SaveResult& result) {
  for (const QString& trouble : {FileTrouble(result), InstrumentTrouble(result)}) {
    if (!trouble.isEmpty()) return {QStringLiteral("✗ ") + trouble, Tone::Bad};
  }
  if (result.fileDiffers) {
    return {QStringLiteral("≠ Marivane.ini is not what the save has written: another program has changed it meanwhile"),
            Tone::Bad};
  }
  if (result.headsOff > 0) {
    return {QStringLiteral("≠ Saved in part: %1 of %2 heads have not got the position that the number gives")
                .arg(result.headsOff)
                .arg(result.headsPlanned),
            Tone::Bad};
  }
  if (!result.memorySaved) {
    return {QStringLiteral("– Saved in the file only: this installation sends no calibration values to the instrument"),
            Tone::Waiting};
  }
  if (result.linesLeftOut > 0) {
    return {QStringLiteral("✗ Saved in part: %1 values for the instrument could not be worked out, and were not sent")
                .arg(result.linesLeftOut),
            Tone::Bad};
  }
  if (!result.differences.empty()) {
    return {QStringLiteral("≠ Saved, but values of the instrument's memory differ from the file: %1")
                .arg(result.differences.size()),
            Tone::Bad};
  }
  if (!result.doubt.empty()) return {QStringLiteral("⚠ Saved, but ") + Text(result.doubt), Tone::Waiting};
  if (!result.notHomed.empty()) {
    return {QStringLiteral("⚠ Saved, but S was not homed for the check: ") + Text(result.notHomed), Tone::Waiting};
  }
  if (result.valuesCompared == 0) {
    return {QStringLiteral("– Saved in the file; the instrument keeps no value for these heads"), Tone::Waiting};
  }
  if (result.inCopy) {
    return {QStringLiteral("– Saved in this window's copy only; the installation is as it was"), Tone::Waiting};
  }
  return {QStringLiteral("✓ Saved: the instrument's memory agrees with the file"), Tone::Good};
}

}  // namespace Helmsway
