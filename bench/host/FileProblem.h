#pragma once

#include <cstdint>
#include <string>

namespace Helmsway {

/// Why a file of the configuration can't be read or written.
struct FileProblem {
  enum class Kind : std::uint8_t {
    None,
    MissingFolder,       ///< there is no folder to make the file in
    NotAFile,            ///< a folder, a pipe, a device, or links that lead nowhere
    NotAllowedToRead,    ///< the file or its folder may not be read
    ReadOnlyFolder,      ///< the file isn't there, and can't be made
    ReadOnlyFile,        ///< also one without any write permission
    ReadOnlyFileSystem,  ///< of the file, or of the folder that it would be made in
    Utf16,               ///< the file isn't 8-bit text
    Busy,                ///< another program writes it, or keeps changing it
    DiskFull,            ///< also a quota that is used up
    BadText,             ///< a path, name or value that the file or the system can't hold
    Interrupted,         ///< an earlier write was cut off, and can't be undone by itself
    System,              ///< anything else; the sentence has the system's words
  };

  Kind kind = Kind::None;
  /// In plain English, without a capital or a full stop, ready to go after "Not saved: ". Empty without a problem.
  std::string sentence{};

  /// True when there is one.
  explicit operator bool() const noexcept { return kind != Kind::None; }
};

/// What a system call that ended with that `errno` says about the file.
FileProblem ProblemAfter(int error, const std::string& path);

FileProblem MissingFolderProblem();
FileProblem NotAFileProblem(const std::string& path);
FileProblem ReadOnlyFileProblem(const std::string& path);
FileProblem ReadOnlyFolderProblem(const std::string& path);
FileProblem Utf16Problem(const std::string& path);
FileProblem BusyProblem(const std::string& what);
/// `kept` is the path of the bytes that were kept from before the write.
FileProblem InterruptedProblem(const std::string& path, const std::string& kept);
/// The same for bytes that were kept by another user's program.
FileProblem UnreadableRecordProblem(const std::string& path, const std::string& kept);
FileProblem BadTextProblem(const std::string& what);

}  // namespace Helmsway
