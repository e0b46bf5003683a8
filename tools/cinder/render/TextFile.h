#pragma once

#include "cinder/audio/UserError.h"

#include <filesystem>
#include <string>

namespace cinder {

/// All that a file or a pipe holds, up to 64 MiB.
/// Errors  UserError: what cannot be read, and what is longer
std::string readWhole(const std::filesystem::path& file);

/// "FILE, line 3: what is wrong".
UserError errorInLine(const std::filesystem::path& file, int line, const std::string& what);

}  // namespace cinder
