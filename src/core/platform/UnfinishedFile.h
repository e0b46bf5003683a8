#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <string_view>

// The steps by which a file takes another one's place whole: a new file beside it, `.NAME.XXXXXX`
// and `.part`, which gets its rights, goes to the disk and is then renamed. All answer with an
// errno where they fail. [any] but the audio thread

namespace cinder::platform {

/// The name behind all links, or an empty one and the reason, such as a circle.
std::filesystem::path followLinks(std::filesystem::path path, int& error);

/// "." for a name without a folder.
std::filesystem::path folderOf(const std::filesystem::path& path);

/// `.NAME.XXXXXX.part`, another one each time. NAME is cut, between characters, where the whole
/// would be too long.
std::string unfinishedName(const std::string& name);

/// Makes the new file, with the rights of any new file, open for reading and writing.
/// Errors  -1, and errno says why
int createUnfinished(const std::filesystem::path& target, std::filesystem::path& unfinished);

/// False where the disk took only some of it.
bool writeAll(int descriptor, std::string_view bytes);

/// Hands on permissions and, where the system lets us, the owner.
bool inheritRights(int descriptor, const struct stat& old);

/// Waits until the disk has what was written.
bool flushToDisk(int descriptor);

/// After a rename: makes the name last. False where the disk has failed; not every file system lets
/// a folder be opened or flushed, and there the file is in place anyway.
bool flushFolder(const std::filesystem::path& folder);

}  // namespace cinder::platform
