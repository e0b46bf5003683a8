#include "presets/archive/InstallArchive.h"

#include "core/platform/UnfinishedFile.h"
#include "presets/archive/SetupArchive.h"
#include "presets/files/Paths.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <istream>
#include <system_error>
#include <utility>
#include <vector>

namespace cinder {

namespace {

using Path = std::filesystem::path;

constexpr int maxNameTries = 10;
constexpr std::size_t randomBytes = 6;

/// A folder that is locked as long as it is open. Without a lock it is nobody's: the system drops
/// the lock of a process that ends, however it ends.
class LockedFolder {
public:
    explicit LockedFolder(const Path& path)
        : descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)) {
        struct stat opened {
        }, named{};
        isOurs = descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 &&
                 // Someone may have removed it between the two calls.
                 ::fstat(descriptor, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
                 opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
    }
    LockedFolder(const LockedFolder&) = delete;
    LockedFolder& operator=(const LockedFolder&) = delete;
    ~LockedFolder() {
        if (descriptor >= 0) ::close(descriptor);
    }

    const int descriptor;
    bool isOurs;
};

void removeTree(const Path& path) {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

/// Removes what starts that were cut off have left beside the destination.
void removeAbandoned(const Path& destination) {
    const std::string head = '.' + destination.filename().string() + '.';
    constexpr std::string_view ending = ".part";
    std::error_code failed;
    std::vector<Path> found;
    std::filesystem::directory_iterator entry(platform::folderOf(destination), failed), end;
    for (; !failed && entry != end; entry.increment(failed)) {
        const std::string name = entry->path().filename().string();
        if (name.size() == head.size() + randomBytes + ending.size() && name.starts_with(head) &&
            name.ends_with(ending))
            found.push_back(entry->path());
    }
    for (const Path& path : found)
        if (const LockedFolder folder(path); folder.isOurs) removeTree(path);
}

/// Missing, or a folder with nothing in it.
bool isVacant(const Path& path) {
    std::error_code failed;
    const auto type = std::filesystem::symlink_status(path, failed).type();
    if (type == std::filesystem::file_type::not_found) return true;
    return type == std::filesystem::file_type::directory &&
           std::filesystem::is_empty(path, failed) && !failed;
}

enum class Outcome { Done, Failed, Impossible };

Outcome installInto(const LockedFolder& folder, const Path& unfinished, const Path& destination,
                    SetupArchive& setup, std::string_view folderName) {
    if (!setup.extractUnflushed(folderName, systemPath(unfinished))) return Outcome::Failed;
    struct stat old {};
    if (::stat(destination.c_str(), &old) == 0 && !platform::inheritRights(folder.descriptor, old))
        return Outcome::Impossible;
    // All of it in one go, where file by file would be a journal's commit for each.
    if (::syncfs(folder.descriptor) != 0) return Outcome::Failed;
    // An empty folder is replaced, one that has been filled meanwhile is not.
    if (::rename(unfinished.c_str(), destination.c_str()) != 0) return Outcome::Impossible;
    platform::flushFolder(platform::folderOf(destination));
    return Outcome::Done;
}

Outcome installBeside(const Path& destination, SetupArchive& setup, std::string_view folderName) {
    const Path parent = platform::folderOf(destination);
    if (!createFolders(systemPath(parent))) return Outcome::Impossible;
    removeAbandoned(destination);
    for (int tries = 0; tries < maxNameTries; ++tries) {
        const Path unfinished = parent / platform::unfinishedName(destination.filename().string());
        if (::mkdir(unfinished.c_str(), 0777) != 0) {
            if (errno == EEXIST) continue;
            return Outcome::Impossible;
        }
        const LockedFolder folder(unfinished);
        if (!folder
                 .isOurs) {  // no locks here, or taken for an abandoned one before it had its lock
            ::rmdir(unfinished.c_str());
            continue;
        }
        const Outcome outcome = installInto(folder, unfinished, destination, setup, folderName);
        if (outcome != Outcome::Done) removeTree(unfinished);
        return outcome;
    }
    return Outcome::Impossible;
}

}  // namespace

bool installArchiveFolder(std::unique_ptr<std::istream> stream, std::string_view folderName,
                          const std::string& destination) {
    SetupArchive setup(std::move(stream));
    int error = 0;
    const Path path =
        platform::followLinks(nativePath(withoutTrailingBackslash(destination)), error);
    if (path.has_filename() && isVacant(path)) {
        const Outcome outcome = installBeside(path, setup, folderName);
        if (outcome != Outcome::Impossible) return outcome == Outcome::Done;
    }
    return setup.extractArchiveFolder(folderName, destination);
}

}  // namespace cinder
