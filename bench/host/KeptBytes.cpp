#include "bench/host/KeptBytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdint>

#include "bench/host/AtomicFile.h"
#include "bench/host/FileDescriptor.h"
#include "bench/host/SystemCalls.h"
#include "bench/host/TemporaryFile.h"

namespace Helmsway {
namespace {

constexpr std::string_view Mark = "helmsway kept bytes 1\n";
constexpr const char* Refuge = "/var/tmp/";
constexpr mode_t Private = S_IRUSR | S_IWUSR;

/// The same for the same path in each run, on each computer.
std::string HashOf(std::string_view path) {
  constexpr std::uint64_t prime = 0x100000001b3;
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char letter : path) hash = (hash ^ static_cast<unsigned char>(letter)) * prime;
  std::array<char, 16> digits{};
  constexpr int hexadecimal = 16;
  char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), hash, hexadecimal).ptr;
  return {digits.data(), end};
}

bool WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = Uninterrupted([&] { return write(file, bytes.data(), bytes.size()); });
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// Takes a number and the letter after it.
std::optional<std::size_t> TakeNumber(std::string_view& text, char end) {
  std::size_t number = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || rest == text.data() + text.size() || *rest != end) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(rest - text.data()) + 1);
  return number;
}

}  // namespace

std::optional<KeptBytes::Record> KeptBytes::Find() const {
  const Place beside = Beside();
  const bool isBesideTrusted = IsBesideTrusted();
  if (isBesideTrusted) {
    if (auto record = FindAt(beside)) return record;
  }
  // The refuge is only used by a user who may not write in the folder, or who finds the place beside taken.
  if (isBesideTrusted && faccessat(folder_, ".", W_OK, AT_EACCESS) == 0) return std::nullopt;
  const std::optional<Place> elsewhere = Elsewhere();
  return elsewhere ? FindAt(*elsewhere) : std::nullopt;
}

bool KeptBytes::Keep(std::string_view old, std::string_view now, Durability durability) {
  if (KeepAt(Beside(), old, now, durability)) return true;
  if (errno != EACCES && errno != EPERM && errno != EROFS) return false;
  const std::optional<Place> elsewhere = Elsewhere();
  return elsewhere && KeepAt(*elsewhere, old, now, durability);
}

bool KeptBytes::Remove(Durability durability) const {
  const auto remove = [](const Place& place) {
    return unlinkat(place.folder, place.name.c_str(), 0) == 0 || errno == ENOENT;
  };
  const Place beside = Beside();
  if (faccessat(folder_, beside.name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0 && IsBesideTrusted()) {
    if (!remove(beside)) return false;
    // A record that came back after a power failure would be taken for that of a write that was cut off.
    if (durability == Durability::Flushed) Uninterrupted([&] { return fsync(folder_); });
  }
  const std::optional<Place> elsewhere = Elsewhere();
  return !elsewhere || remove(*elsewhere);
}

KeptBytes::Place KeptBytes::Beside() const {
  constexpr std::size_t mostOfName = 200;  // the whole must not become longer than file names may be
  std::string name = "." + name_.substr(0, mostOfName) + ".kept";
  return {folder_, name, name};
}

bool KeptBytes::IsBesideTrusted() const {
  struct stat record {};
  struct stat folder {};
  struct stat file {};
  const std::string name = Beside().name;
  if (fstatat(folder_, name.c_str(), &record, AT_SYMLINK_NOFOLLOW) != 0) return true;
  if (record.st_uid == 0 || record.st_uid == geteuid()) return true;
  // Where no folder is sticky, the one who made the record can replace the file as well.
  if (fstat(folder_, &folder) != 0) return false;
  if ((folder.st_mode & S_ISVTX) == 0 || record.st_uid == folder.st_uid) return true;
  if (fstatat(folder_, name_.c_str(), &file, 0) != 0) return false;
  return record.st_uid == file.st_uid || (file.st_mode & S_IWOTH) != 0;
}

std::optional<KeptBytes::Place> KeptBytes::Elsewhere() const {
  const std::string path = WholePath();
  if (path.empty()) return std::nullopt;
  std::string name = Refuge;
  name.append("helmsway-").append(std::to_string(geteuid())).append("-").append(HashOf(path)).append(".kept");
  return Place{AT_FDCWD, name, name};
}

std::string KeptBytes::WholePath() const {
  constexpr std::size_t longest = 4096;
  std::string path(longest, '\0');
  const std::string link = "/proc/self/fd/" + std::to_string(folder_);
  const ssize_t size = readlink(link.c_str(), path.data(), path.size());
  if (size <= 0 || static_cast<std::size_t>(size) == longest) return "";
  path.resize(static_cast<std::size_t>(size));
  return path.append("/").append(name_);
}

bool KeptBytes::KeepAt(const Place& place, std::string_view old, std::string_view now, Durability durability) const {
  // A record that isn't whole: its writer died before it touched the file.
  if (unlinkat(place.folder, place.name.c_str(), 0) != 0 && errno != ENOENT) return false;
  FileDescriptor file = OpenFile(place.folder, place.name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, Private);
  if (!file) return false;
  struct stat status {};
  // Another user's program that may write the file may have to undo the write.
  if (place.folder == folder_ && fstatat(folder_, name_.c_str(), &status, 0) == 0) {
    TakeOverRights(file.Get(), status);
  }
  std::string head(Mark);
  head.append(std::to_string(old.size())).append(" ").append(std::to_string(now.size())).append("\n");
  head.append(WholePath()).append("\n");
  const bool isFlushed = durability == Durability::Flushed;
  bool isKept = WriteAll(file.Get(), head) && WriteAll(file.Get(), old) && WriteAll(file.Get(), now);
  isKept = isKept && (!isFlushed || Uninterrupted([&] { return fsync(file.Get()); }) == 0);
  isKept = file.Close() && isKept;
  if (!isKept) {
    const int error = errno;
    unlinkat(place.folder, place.name.c_str(), 0);
    errno = error;
    return false;
  }
  if (isFlushed && place.folder == folder_) Uninterrupted([&] { return fsync(folder_); });
  return true;
}

std::optional<KeptBytes::Record> KeptBytes::FindAt(const Place& place) const {
  const FileDescriptor file = OpenFile(place.folder, place.name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
  if (!file && errno == EACCES && place.folder == folder_) return Record{place.path, false};
  struct stat status {};
  // In a folder that others may write, only a file of this user is ours.
  if (!file || fstat(file.Get(), &status) != 0) return std::nullopt;
  if (place.folder != folder_ && status.st_uid != geteuid()) return std::nullopt;
  FileContents contents;
  if (ReadWholeFileAt(place.folder, place.name, contents) != FilePresence::Present) return std::nullopt;

  Record record;
  record.path = place.path;
  std::string_view text = contents.bytes;
  if (!text.starts_with(Mark)) return record;
  text.remove_prefix(Mark.size());
  const auto oldSize = TakeNumber(text, ' ');
  const auto newSize = oldSize ? TakeNumber(text, '\n') : std::nullopt;
  // A path can have a line end in it, so what comes after it is found from the end.
  if (!newSize || *newSize > text.size() || *oldSize > text.size() - *newSize) return record;
  const std::string_view path = text.substr(0, text.size() - *newSize - *oldSize);
  if (path.empty() || path.back() != '\n') return record;
  // A folder may have been moved since; elsewhere, the path is all that ties the bytes to the file.
  const bool isOfThisFile = place.folder == folder_ || path.substr(0, path.size() - 1) == WholePath();
  if (!isOfThisFile) return std::nullopt;
  text.remove_prefix(path.size());
  record.isWhole = true;
  record.old = text.substr(0, *oldSize);
  record.now = text.substr(*oldSize);
  return record;
}

}  // namespace Helmsway
