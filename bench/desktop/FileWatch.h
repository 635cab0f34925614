#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <filesystem>
#include <string>

#include "bench/host/FileStamp.h"

namespace Helmsway {

/// Notices when a file, which may come and go, no longer holds what it held when it was last looked at.
class FileWatch : public QObject {
  Q_OBJECT

 public:
  explicit FileWatch(QObject* parent = nullptr);

  /// From now on this file.
  void Watch(const std::filesystem::path& file);

  /// Looks at the file. True when its bytes aren't those of the last look; one that can't be read counts as empty.
  bool Look();
  /// As they were at the last look.
  const std::string& Bytes() const { return bytes_; }

 Q_SIGNALS:
  /// Something has happened to the file or in its folder since the last look; its bytes may still be the same.
  void Touched();

 private:
  void Poll();
  void WatchAgain();

  QFileSystemWatcher watcher_;
  QTimer poll_;  ///< network folders report nothing
  std::filesystem::path file_;
  FileStamp stamp_;
  std::string bytes_;
};

}  // namespace Helmsway
