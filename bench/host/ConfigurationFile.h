#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "bench/host/Durability.h"
#include "bench/host/FileProblem.h"

/// Edits of a configuration file on the disk. One writer at a time has the file's folder, from before it reads until
/// its edit is done, so that no edit of our own programs is lost. Each gives the problem that kept the edit from being
/// done; the file is then as it was, or is put right by the next edit.
namespace Helmsway {

struct WriteTerms {
  Durability durability = Durability::Flushed;
  /// How long to wait for other writers of the folder, and again for a program that keeps changing the file. A disk
  /// that is busy can hold a writer up for seconds, and with it all that wait.
  std::chrono::milliseconds patience{20'000};
  /// Asked while an edit waits, if there is one: true ends the wait, and the edit fails. An edit that has begun to
  /// write asks no more.
  bool (*isGivenUp)() noexcept = nullptr;
};

/// As `WithValue` says. Makes a file that is missing; leaves one alone that says so already.
FileProblem SetIniValue(const std::string& path, std::string_view section, std::string_view key, std::string_view value,
                        const WriteTerms& terms = {});

/// As `WithoutKey` says. A missing file has no such key.
FileProblem RemoveIniValue(const std::string& path, std::string_view section, std::string_view key,
                           const WriteTerms& terms = {});

/// To be called before a file is read for the first time: a write in place that was cut off is undone, unless another
/// writer is at work. Costs next to nothing where there is none.
void UndoInterruptedWrites(const std::string& path, Durability durability);

}  // namespace Helmsway
