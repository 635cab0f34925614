#include "bench/host/InPlaceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

#include "bench/host/FileDescriptor.h"
#include "bench/host/KeptBytes.h"
#include "bench/host/StillFile.h"
#include "bench/host/SystemCalls.h"

namespace Helmsway {
namespace {

using Kind = Replacement::Kind;

/// The part of new bytes that differs from the old ones of the same places.
struct Difference {
  std::size_t begin = 0;
  std::size_t end = 0;
};

Difference DifferenceOf(std::string_view old, std::string_view now) {
  const auto front = std::mismatch(old.begin(), old.end(), now.begin(), now.end()).second - now.begin();
  Difference difference{static_cast<std::size_t>(front), now.size()};
  if (old.size() != now.size()) return difference;
  const auto back = std::mismatch(old.rbegin(), old.rend(), now.rbegin(), now.rend()).second - now.rbegin();
  difference.end = std::max(difference.begin, now.size() - static_cast<std::size_t>(back));
  return difference;
}

/// Gives the file the bytes `now` in place of `old`.
bool Overwrite(int file, std::string_view old, std::string_view now, Durability durability) {
  const Difference difference = DifferenceOf(old, now);
  for (std::size_t place = difference.begin; place < difference.end;) {
    const std::size_t size = difference.end - place;
    const auto offset = static_cast<off_t>(place);
    const ssize_t written = Uninterrupted([&] { return pwrite(file, now.data() + place, size, offset); });
    if (written <= 0) return false;
    place += static_cast<std::size_t>(written);
  }
  if (now.size() < old.size() && ftruncate(file, static_cast<off_t>(now.size())) != 0) return false;
  return durability == Durability::Volatile || Uninterrupted([&] { return fsync(file); }) == 0;
}

/// Whether each byte is the old one or the new one of its place, as a write leaves them that was cut off.
bool IsMixture(std::string_view bytes, std::string_view old, std::string_view now) {
  if (bytes.size() < std::min(old.size(), now.size()) || bytes.size() > std::max(old.size(), now.size())) return false;
  for (std::size_t place = 0; place < bytes.size(); ++place) {
    const char letter = bytes[place];
    const bool isOld = place < old.size() && old[place] == letter;
    const bool isNew = place < now.size() && now[place] == letter;
    // A file that a power failure left longer than its bytes has zeros there.
    if (!isOld && !isNew && (letter != '\0' || place < old.size())) return false;
  }
  return true;
}

}  // namespace

Replacement WriteInPlace(int folder, const std::string& name, std::string_view bytes, const FileContents& expected,
                         Durability durability) {
  const int adding = expected.bytes.empty() ? O_APPEND : 0;
  const FileDescriptor file = OpenFile(folder, name, O_RDWR | O_NONBLOCK | O_NOCTTY | adding);
  if (!file) return {errno == ENOENT ? Kind::Superseded : Kind::Failed, errno};
  const auto isAsExpected = [&] {
    struct stat status {};
    return fstat(file.Get(), &status) == 0 && SameContents(StampOf(status), expected.stamp) &&
           (expected.contentsSettled || HoldsBytes(file.Get(), expected.bytes));
  };
  if (!isAsExpected()) return {Kind::Superseded};
  KeptBytes kept(folder, name);
  if (!kept.Keep(expected.bytes, bytes, durability)) return {Kind::Barred, errno};
  if (!isAsExpected()) {
    kept.Remove(durability);
    return {Kind::Superseded};
  }

  if (!Overwrite(file.Get(), expected.bytes, bytes, durability)) {
    const int error = errno;
    // The old bytes need no room that the file hasn't got.
    const bool isUndone = Overwrite(file.Get(), bytes, expected.bytes, durability);
    MarkAsWhole(file.Get());
    if (isUndone) kept.Remove(durability);
    return {Kind::Failed, error};
  }
  MarkAsWhole(file.Get());
  const bool holds = HoldsBytes(file.Get(), bytes);
  kept.Remove(durability);
  return {holds ? Kind::Done : Kind::Superseded};
}

FileProblem InterruptedWriteObstacle(int folder, const std::string& name) {
  const auto record = KeptBytes(folder, name).Find();
  FileContents contents;
  if (record && !record->isReadable) return UnreadableRecordProblem(name, record->path);
  if (!record || !record->isWhole || ReadWholeFileAt(folder, name, contents) != FilePresence::Present) return {};
  return IsMixture(contents.bytes, record->old, record->now) ? FileProblem() : InterruptedProblem(name, record->path);
}

FileProblem UndoInterruptedWrite(int folder, const std::string& name, Durability durability) {
  const KeptBytes kept(folder, name);
  const auto record = kept.Find();
  if (!record) return {};
  if (!record->isReadable) return UnreadableRecordProblem(name, record->path);
  FileContents contents;
  const FilePresence presence = ReadWholeFileAt(folder, name, contents);
  if (presence == FilePresence::Failed) return ProblemAfter(errno, name);
  // A file that another program has removed since has nothing to be undone.
  const bool isTorn = record->isWhole && presence == FilePresence::Present && contents.bytes != record->old &&
                      contents.bytes != record->now;
  if (isTorn) {
    if (!IsMixture(contents.bytes, record->old, record->now)) return InterruptedProblem(name, record->path);
    const FileDescriptor file = OpenFile(folder, name, O_RDWR | O_NONBLOCK | O_NOCTTY);
    if (!file) return ProblemAfter(errno, name);
    if (!Overwrite(file.Get(), contents.bytes, record->old, durability)) return ProblemAfter(errno, name);
    MarkAsWhole(file.Get());
  }
  if (!kept.Remove(durability)) return ProblemAfter(errno, record->path);
  return {};
}

}  // namespace Helmsway
