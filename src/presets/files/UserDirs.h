#pragma once

#include <filesystem>
#include <string_view>

namespace cinder {

/// The folder that a user-dirs.dirs file gives a name such as "XDG_DOCUMENTS_DIR". Lines are
///     XDG_DOCUMENTS_DIR="$HOME/Documents"     or ="/an/absolute/path"
/// with `\` before a character that would mean something to a shell. Other lines say nothing, and
/// of two with the same name the later one counts.
/// Errors  an empty path where no line gives the name such a folder, or it needs a home and there
///         is none
std::filesystem::path userDirectory(std::string_view content, std::string_view name,
                                    const std::filesystem::path& home);

}  // namespace cinder
