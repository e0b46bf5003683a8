#include "core/platform/UnfinishedFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

namespace cinder::platform {

namespace {

using Path = std::filesystem::path;

constexpr int maxLinks = 40;  // as many as the kernel follows
constexpr std::size_t maxNameBytes = 255;
constexpr int maxNameTries = 100;

}  // namespace

std::string unfinishedName(const std::string& name) {
    std::random_device random;
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::string ending = ".";
    for (int i = 0; i < 6; ++i)
        ending += letters[random() % letters.size()];
    ending += ".part";

    std::size_t kept = std::min(name.size(), maxNameBytes - 1 - ending.size());
    const auto isInsideCharacter = [&](std::size_t at) {
        return at < name.size() && (static_cast<unsigned char>(name[at]) & 0xc0) == 0x80;
    };
    while (kept > 0 && isInsideCharacter(kept))
        --kept;
    std::string whole = ".";
    whole.append(name, 0, kept).append(ending);
    return whole;
}

Path followLinks(Path path, int& error) {
    std::error_code failed;
    for (int link = 0; std::filesystem::is_symlink(path, failed); ++link) {
        error = ELOOP;
        if (link == maxLinks) return {};
        const Path next = std::filesystem::read_symlink(path, failed);
        error = failed.value();
        if (failed) return {};
        path = path.parent_path() / next;  // an absolute `next` replaces all of it
    }
    error = 0;
    return path;
}

Path folderOf(const Path& path) {
    const Path parent = path.parent_path();
    return parent.empty() ? Path(".") : parent;
}

int createUnfinished(const Path& target, Path& unfinished) {
    for (int tries = 0; tries < maxNameTries; ++tries) {
        Path candidate = folderOf(target) / unfinishedName(target.filename().string());
        // Opened as any new file is, so that the umask and the folder's defaults hold.
        const int made = ::open(candidate.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (made < 0 && errno == EEXIST) continue;
        if (made >= 0) unfinished = std::move(candidate);
        return made;
    }
    return -1;
}

bool inheritRights(int descriptor, const struct stat& old) {
    // First the owner, since a change of owner clears bits of the mode. Only root may give files
    // away, and for anyone else it is no loss when this fails; but then the group's rights were
    // meant for another group.
    mode_t mode = old.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
    const bool sameOwners = ::fchown(descriptor, old.st_uid, old.st_gid) == 0 ||
                            ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) == 0;
    if (!sameOwners) mode &= ~static_cast<mode_t>(S_IRWXG);
    return ::fchmod(descriptor, mode) == 0;
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t wrote = ::write(descriptor, bytes.data(), bytes.size());
        if (wrote >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(wrote));
        else if (errno != EINTR)
            return false;
    }
    return true;
}

bool flushToDisk(int descriptor) {
    while (::fsync(descriptor) != 0)
        if (errno != EINTR) return false;
    return true;
}

bool flushFolder(const Path& folder) {
    const int opened = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0) return true;
    const bool hasFailed = !flushToDisk(opened) && errno == EIO;
    ::close(opened);
    if (hasFailed) errno = EIO;
    return !hasFailed;
}

}  // namespace cinder::platform
