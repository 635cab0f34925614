#pragma once

#include <string>

#include "bench/host/FileProblem.h"

namespace Helmsway {

/// What would keep a write of that file of the configuration from being done now; no problem when it could be done, or
/// when nothing speaks against it. Writes nothing. A write can still fail: of a full disk, for one.
FileProblem WriteObstacle(const std::string& path);

/// What keeps a file in that folder, which is there, from being written, be it replaced or written in place. A file
/// without any write permission is left alone, also by the superuser.
FileProblem WriteAccessProblem(int folder, const std::string& name);

/// What keeps the file from being read as configuration. A missing file is no problem: it holds no keys. A UTF-16 file
/// is one: it reads as if it held no keys.
FileProblem ReadObstacle(const std::string& path);

}  // namespace Helmsway
