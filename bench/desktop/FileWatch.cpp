#include "bench/desktop/FileWatch.h"

#include <chrono>
#include <utility>

#include "bench/host/AtomicFile.h"

namespace Helmsway {
namespace {

constexpr std::chrono::seconds BetweenPolls{1};

QString TextOf(const std::filesystem::path& path) { return QString::fromStdString(path.string()); }

}  // namespace

FileWatch::FileWatch(QObject* parent) : QObject(parent) {
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &FileWatch::Touched);
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, &FileWatch::Touched);
  connect(&poll_, &QTimer::timeout, this, &FileWatch::Poll);
}

void FileWatch::Watch(const std::filesystem::path& file) {
  if (!watcher_.files().isEmpty()) watcher_.removePaths(watcher_.files());
  if (!watcher_.directories().isEmpty()) watcher_.removePaths(watcher_.directories());
  file_ = file;
  Look();
  poll_.start(BetweenPolls);
}

void FileWatch::WatchAgain() {
  std::error_code ignored;
  if (std::filesystem::is_directory(file_.parent_path(), ignored)) watcher_.addPath(TextOf(file_.parent_path()));
  // A file that is replaced by another of its name isn't watched any more.
  if (std::filesystem::exists(file_, ignored)) watcher_.addPath(TextOf(file_));
}

bool FileWatch::Look() {
  WatchAgain();
  FileContents contents;
  if (ReadWholeFile(file_.string(), contents) != FilePresence::Present) contents = {};
  stamp_ = contents.stamp;
  return std::exchange(bytes_, std::move(contents.bytes)) != bytes_;
}

void FileWatch::Poll() {
  FileStamp stamp;
  if (ReadStamp(file_.string(), stamp) != FilePresence::Present) stamp = {};
  if (stamp != stamp_) Q_EMIT Touched();
}

}  // namespace Helmsway
