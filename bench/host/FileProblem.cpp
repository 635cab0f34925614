#include "bench/host/FileProblem.h"

#include <cerrno>
#include <cstring>

namespace Helmsway {
namespace {

using Kind = FileProblem::Kind;

std::string NameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

}  // namespace

FileProblem ProblemAfter(int error, const std::string& path) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return MissingFolderProblem();
    case EISDIR:
    case ELOOP:
      return NotAFileProblem(path);
    case EACCES:
    case EPERM:
      return {Kind::NotAllowedToRead, "you may not read " + NameOf(path) + " or its folder"};
    case EROFS:
      return {Kind::ReadOnlyFileSystem, "the file system is read-only"};
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return {Kind::DiskFull, "the disk is full"};
    case EBUSY:
    case ETXTBSY:
    case EWOULDBLOCK:
      return BusyProblem("another program is writing in the folder of " + NameOf(path));
    case ENAMETOOLONG:
      return BadTextProblem("the path is too long");
    default:
      return {Kind::System, NameOf(path) + ": " + std::strerror(error)};
  }
}

FileProblem MissingFolderProblem() { return {Kind::MissingFolder, "the folder is missing"}; }

FileProblem NotAFileProblem(const std::string& path) { return {Kind::NotAFile, NameOf(path) + " is not a file"}; }

FileProblem ReadOnlyFileProblem(const std::string& path) {
  return {Kind::ReadOnlyFile, NameOf(path) + " is read-only"};
}

FileProblem ReadOnlyFolderProblem(const std::string& path) {
  return {Kind::ReadOnlyFolder, "the folder is read-only, and " + NameOf(path) + " isn't in it yet"};
}

FileProblem Utf16Problem(const std::string& path) {
  return {Kind::Utf16, NameOf(path) + " is a UTF-16 file; save it as 8-bit text (UTF-8 or the local code page)"};
}

FileProblem BusyProblem(const std::string& what) { return {Kind::Busy, what}; }

FileProblem InterruptedProblem(const std::string& path, const std::string& kept) {
  return {Kind::Interrupted, "a write of " + NameOf(path) +
                                 " was cut off, and the file has been changed since; compare it with " + kept +
                                 ", which has the old text, and delete that"};
}

FileProblem UnreadableRecordProblem(const std::string& path, const std::string& kept) {
  return {Kind::Interrupted, "a write of " + NameOf(path) + " by another user was cut off, and you may not read " +
                                 kept + ", which has the old text"};
}

FileProblem BadTextProblem(const std::string& what) { return {Kind::BadText, what}; }

}  // namespace Helmsway
