#include "presets/archive/OpenFolder.h"

#include "core/platform/UnfinishedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace cinder::archive {

namespace {

constexpr int maxNameTries = 100;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

}  // namespace

std::optional<OpenFolder> OpenFolder::open(const std::filesystem::path& path, Flush flush) {
    const int opened = ::open(path.c_str(), folderFlags);
    if (opened < 0) return {};
    return OpenFolder(opened, flush);
}

OpenFolder::~OpenFolder() {
    if (descriptor >= 0) ::close(descriptor);
}

std::optional<OpenFolder> OpenFolder::subfolder(const std::string& name) const {
    if (::mkdirat(descriptor, name.c_str(), 0777) != 0 && errno != EEXIST) return {};
    const int opened = ::openat(descriptor, name.c_str(), folderFlags | O_NOFOLLOW);
    if (opened < 0) return {};
    return OpenFolder(opened, flush);
}

bool OpenFolder::hasFile(const std::string& name) const {
    struct stat status {};
    return ::fstatat(descriptor, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           !S_ISDIR(status.st_mode);
}

int OpenFolder::createUnfinished(const std::string& target, std::string& unfinished) const {
    for (int tries = 0; tries < maxNameTries; ++tries) {
        unfinished = platform::unfinishedName(target);
        const int made = ::openat(descriptor, unfinished.c_str(),
                                  O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (made >= 0 || errno != EEXIST) return made;
    }
    return -1;
}

bool OpenFolder::replaceFile(const std::string& name, std::string_view bytes) const {
    struct stat old {};
    const bool isThere = ::fstatat(descriptor, name.c_str(), &old, AT_SYMLINK_NOFOLLOW) == 0;
    const bool isRegular = isThere && S_ISREG(old.st_mode);
    // A rename onto a write-protected file would succeed, but not as its owner meant it.
    if (isRegular && ::faccessat(descriptor, name.c_str(), W_OK, AT_EACCESS) != 0) return false;

    std::string unfinished;
    const int file = createUnfinished(name, unfinished);
    if (file < 0) return false;
    const bool isFilled = platform::writeAll(file, bytes) &&
                          (!isRegular || platform::inheritRights(file, old)) &&
                          (flush == Flush::Later || platform::flushToDisk(file));
    // The system may find only now that a write has failed.
    const bool isWritten = ::close(file) == 0 && isFilled;
    if (isWritten && ::renameat(descriptor, unfinished.c_str(), descriptor, name.c_str()) == 0)
        return true;
    ::unlinkat(descriptor, unfinished.c_str(), 0);
    return false;
}

void OpenFolder::flushNames() const {
    // Not every file system lets a folder be flushed; the files are in place anyway.
    if (flush == Flush::EachFile) platform::flushToDisk(descriptor);
}

}  // namespace cinder::archive
