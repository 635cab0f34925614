#pragma once

#include <string>
#include <string_view>

#include "bench/host/AtomicFile.h"
#include "bench/host/Durability.h"
#include "bench/host/FileProblem.h"

/// Files written where they are, for those that can't be replaced: other programs may see a part of such a write.
namespace Helmsway {

/// Writes the bytes of the file that change, with the old and new ones kept on the disk meanwhile. A file that is empty
/// is only added to, so that no byte of another program is written over. `Superseded` when another program has changed
/// the file since it was read, or while it was written. When `Failed`, the file is as it was, or the kept bytes are
/// still there for `UndoInterruptedWrite`; `Barred` when there is no place to keep them. For a holder of the folder's
/// lock.
Replacement WriteInPlace(int folder, const std::string& name, std::string_view bytes, const FileContents& expected,
                         Durability durability);

/// What `UndoInterruptedWrite` would stumble over. Changes nothing.
FileProblem InterruptedWriteObstacle(int folder, const std::string& name);

/// Puts the old bytes back where a write in place was cut off. A problem when that can't be done, or when the file is
/// neither the old one, nor the new one, nor a mixture of both, because another program has changed it since. For a
/// holder of the folder's lock.
FileProblem UndoInterruptedWrite(int folder, const std::string& name, Durability durability);

}  // namespace Helmsway
