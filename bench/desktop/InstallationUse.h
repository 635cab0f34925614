#pragma once

#include <QString>
#include <QTemporaryDir>
#include <optional>

#include "bench/desktop/BenchSession.h"
#include "bench/desktop/InstallationLock.h"

class QWidget;

namespace Helmsway {

/// What a window has to do with an installation for as long as it is open: it works on the files themselves, which one
/// window at a time does, or on a copy of its own, which goes with this object.
class InstallationUse {
 public:
  /// Where another window works on the files, the operator is asked whether to look at a copy; the options are changed
  /// to that copy then.
  InstallationUse(SessionOptions& options, QWidget* parent);

  /// False when the operator would rather not.
  bool IsWanted() const { return isWanted_; }

 private:
  bool AskForCopy(const std::filesystem::path& installation, QWidget* parent) const;
  void MakeCopy(SessionOptions& options);

  InstallationLock lock_;
  std::optional<QTemporaryDir> copy_;
  bool isWanted_ = true;
};

/// The installation's place, as the window's title has it.
QString PlaceOf(const SessionOptions& options);

}  // namespace Helmsway
