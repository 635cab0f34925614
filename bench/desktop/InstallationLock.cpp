#include "bench/desktop/InstallationLock.h"

#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <ctime>

#include "bench/host/DataFolder.h"
#include "bench/host/SystemCalls.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

constexpr const char* LockName = ".helmsway-bench.lock";
constexpr std::size_t LongestHolder = 200;

std::string UserName() {
  const passwd* const entry = getpwuid(geteuid());
  return entry == nullptr ? "user " + std::to_string(geteuid()) : std::string(entry->pw_name);
}

std::string OwnWords() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::array<char, 32> time{};
  const std::size_t length = std::strftime(time.data(), time.size(), "%Y-%m-%d %H:%M:%S", &local);
  return "helmsway-bench, process " + std::to_string(getpid()) + " of " + UserName() + ", since " +
         std::string(time.data(), length);
}

/// What the holder has written. Any program could have written it, so it is cut, and has no control characters.
std::string WordsIn(int descriptor) {
  std::array<char, LongestHolder> bytes{};
  const ssize_t count = Uninterrupted([&] { return pread(descriptor, bytes.data(), bytes.size(), 0); });
  std::string words(bytes.data(), count < 0 ? 0 : static_cast<std::size_t>(count));
  std::replace_if(
      words.begin(), words.end(), [](char character) { return character < ' ' || character > '~'; }, ' ');
  words.erase(words.find_last_not_of(' ') + 1);
  return words.empty() ? "another window" : words;
}

/// The file behind the descriptor still has that name: its last holder hasn't removed it meanwhile.
bool IsAt(int descriptor, const fs::path& file) {
  struct stat opened {};
  struct stat named {};
  return fstat(descriptor, &opened) == 0 && stat(file.c_str(), &named) == 0 && opened.st_dev == named.st_dev &&
         opened.st_ino == named.st_ino;
}

fs::path FallbackFor(const fs::path& installation) {
  struct stat folder {};
  if (stat(installation.c_str(), &folder) != 0) return {};
  try {
    fs::path locks = DataFolder() / "locks";
    fs::create_directories(locks);
    return locks / (std::to_string(folder.st_dev) + "-" + std::to_string(folder.st_ino));
  } catch (const std::exception&) {
    // Without a home, and where nothing can be made in the installation, there is no place for a lock.
    return {};
  }
}

}  // namespace

InstallationLock::InstallationLock(const fs::path& installation) {
  if (TakeAt(installation / LockName) != Outcome::Impossible) return;
  const fs::path fallback = FallbackFor(installation);
  if (!fallback.empty()) TakeAt(fallback);
}

InstallationLock::Outcome InstallationLock::TakeAt(const fs::path& file) {
  constexpr int MostAttempts = 100;
  for (int attempt = 0; attempt < MostAttempts; ++attempt) {
    FileDescriptor lock = OpenFile(AT_FDCWD, file.string(), O_RDWR | O_CREAT | O_NOFOLLOW, 0644);
    // Another user's file can be locked, too, without being written.
    if (!lock) lock = OpenFile(AT_FDCWD, file.string(), O_RDONLY | O_NOFOLLOW);
    if (!lock) return Outcome::Impossible;
    if (Uninterrupted([&] { return flock(lock.Get(), LOCK_EX | LOCK_NB); }) != 0) {
      if (errno != EWOULDBLOCK) return Outcome::Impossible;
      holder_ = WordsIn(lock.Get());
      return Outcome::Held;
    }
    if (!IsAt(lock.Get(), file)) continue;
    const std::string words = OwnWords() + "\n";
    // Without the words, others only learn that some window has it.
    if (ftruncate(lock.Get(), 0) == 0) static_cast<void>(pwrite(lock.Get(), words.data(), words.size(), 0) < 0);
    lock_ = std::move(lock);
    file_ = file;
    return Outcome::Taken;
  }
  return Outcome::Impossible;
}

InstallationLock::~InstallationLock() {
  // While it is locked: a window that has opened it meanwhile sees that it has lost its name.
  if (lock_) unlink(file_.c_str());
}

}  // namespace Helmsway
