#pragma once

#include <cstddef>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace cinder::platform {

/// Replaces the content of a file, or makes the file. The bytes go to `.NAME.XXXXXX.part` beside
/// it, to the disk, and then to the name: whoever reads, at any moment and after a crash at any
/// moment, finds the old content or all of the new.
/// Shape   a link is followed: the file it points to is replaced and the link stays. A file that
///         is replaced hands on its permissions and, where the system lets us, its owner
/// Errors  false, and what was there is still there: the folder is missing or closed to us, the
///         disk is full, the name is that of a folder, a pipe or device, or write-protected
/// [any] but the audio thread
bool writeWholeFile(const std::filesystem::path& path, std::string_view bytes);

/// All bytes of a regular file, links followed.
/// Errors  none: it can't be read, isn't regular (a pipe would block) or has more than `maxBytes`
/// [any] but the audio thread
std::optional<std::string> readWholeFile(
    const std::filesystem::path& path,
    std::size_t maxBytes = std::numeric_limits<std::ptrdiff_t>::max());

}  // namespace cinder::platform
