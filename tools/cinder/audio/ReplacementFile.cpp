#include "cinder/audio/ReplacementFile.h"

#include "cinder/audio/UserError.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <random>
#include <string>
#include <string_view>

namespace cinder {

namespace {

constexpr int maxLinks = 40;  // as many as the kernel follows
constexpr size_t maxNameBytes = 255;
constexpr int maxNameTries = 100;

std::filesystem::path followLinks(const std::filesystem::path& path) {
    std::filesystem::path followed = path;
    std::error_code ignored;
    for (int link = 0; std::filesystem::is_symlink(followed, ignored); ++link) {
        if (link == maxLinks) throw systemError("write", path, ELOOP);
        std::error_code failed;
        const auto next = std::filesystem::read_symlink(followed, failed);
        if (failed) throw systemError("write", path, failed.value());
        followed = followed.parent_path() / next;  // an absolute `next` replaces all of it
    }
    return followed;
}

/// `.NAME.XXXXXX.part`, with NAME cut (between characters) where the whole would be too long.
std::string unfinishedName(const std::string& name, std::random_device& random) {
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::string ending = ".";
    for (int i = 0; i < 6; ++i)
        ending += letters[random() % letters.size()];
    ending += ".part";

    size_t kept = std::min(name.size(), maxNameBytes - 1 - ending.size());
    const auto isInsideCharacter = [&](size_t at) {
        return at < name.size() && (static_cast<unsigned char>(name[at]) & 0xc0) == 0x80;
    };
    while (kept > 0 && isInsideCharacter(kept))
        --kept;
    std::string whole = ".";
    whole.append(name, 0, kept).append(ending);
    return whole;
}

}  // namespace

ReplacementFile::ReplacementFile(const std::filesystem::path& path)
    : shownTarget(path), target(followLinks(path)) {
    if (!target.has_filename()) throw UserError(quoted(path) + " is not the name of a file");
    inspectTarget();
    createUnfinished();
}

ReplacementFile::~ReplacementFile() {
    if (!unfinished.empty()) ::unlink(unfinished.c_str());
}

void ReplacementFile::inspectTarget() {
    struct stat status {};
    if (::stat(target.c_str(), &status) != 0) {
        if (errno == ENOENT) return;
        throw systemError("write", shownTarget, errno);
    }
    if (S_ISDIR(status.st_mode)) throw UserError(quoted(shownTarget) + " is a folder");
    if (!S_ISREG(status.st_mode))
        throw UserError(quoted(shownTarget) + " is a pipe or device, not a file to replace");
    // The rename would succeed all the same, but not as the owner meant it.
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        throw systemError("write", shownTarget, errno);
}

void ReplacementFile::createUnfinished() {
    std::random_device random;
    for (int tries = 0; tries < maxNameTries; ++tries) {
        const auto candidate = folder() / unfinishedName(target.filename().string(), random);
        // Opened as any new file is, so that the umask and the folder's defaults hold.
        descriptor =
            FileDescriptor(::open(candidate.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        if (descriptor.isOpen()) {
            unfinished = candidate;
            return;
        }
        if (errno != EEXIST) break;
    }
    throw systemError("write", shownTarget, errno);
}

std::filesystem::path ReplacementFile::folder() const {
    const auto parent = target.parent_path();
    return parent.empty() ? std::filesystem::path(".") : parent;
}

void ReplacementFile::fail() noexcept {
    if (firstError == 0) firstError = errno;
}

void ReplacementFile::write(const void* data, std::int64_t numBytes) noexcept {
    const auto* bytes = static_cast<const char*>(data);
    std::int64_t done = 0;
    while (done < numBytes && firstError == 0) {
        const auto wrote =
            ::write(descriptor.get(), bytes + done, static_cast<size_t>(numBytes - done));
        if (wrote >= 0)
            done += wrote;
        else if (errno != EINTR)
            fail();
    }
}

std::int64_t ReplacementFile::read(void* data, std::int64_t numBytes) noexcept {
    auto* bytes = static_cast<char*>(data);
    std::int64_t done = 0;
    while (done < numBytes && firstError == 0) {
        const auto got =
            ::read(descriptor.get(), bytes + done, static_cast<size_t>(numBytes - done));
        if (got > 0)
            done += got;
        else if (got == 0)
            break;
        else if (errno != EINTR)
            fail();
    }
    return done;
}

std::int64_t ReplacementFile::seek(std::int64_t offset, int whence) noexcept {
    const auto position = ::lseek(descriptor.get(), offset, whence);
    if (position < 0) fail();
    return position;
}

std::int64_t ReplacementFile::size() noexcept {
    struct stat status {};
    if (::fstat(descriptor.get(), &status) != 0) fail();
    return status.st_size;
}

void ReplacementFile::throwIfFailed() const {
    if (firstError != 0) throw systemError("write", shownTarget, firstError);
}

void ReplacementFile::commit() {
    throwIfFailed();
    inheritRights();
    // The data must be on the disk before the name is: a crash in between would otherwise leave
    // an empty file where a whole one was.
    while (::fsync(descriptor.get()) != 0) {
        if (errno == EINTR) continue;
        fail();
        break;
    }
    if (!descriptor.close()) fail();
    throwIfFailed();
    if (::rename(unfinished.c_str(), target.c_str()) != 0)
        throw systemError("write", shownTarget, errno);
    unfinished.clear();
    syncFolder();
}

void ReplacementFile::inheritRights() {
    struct stat status {};
    if (::stat(target.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return;
    // First the owner, since a change of owner clears bits of the mode. Only root may give files
    // away, and for anyone else it is no loss when this fails; but then the group's rights were
    // meant for another group.
    auto mode = status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
    const bool sameOwners = ::fchown(descriptor.get(), status.st_uid, status.st_gid) == 0 ||
                            ::fchown(descriptor.get(), static_cast<uid_t>(-1), status.st_gid) == 0;
    if (!sameOwners) mode &= ~static_cast<mode_t>(S_IRWXG);
    if (::fchmod(descriptor.get(), mode) != 0) fail();
}

void ReplacementFile::syncFolder() {
    // Not every file system lets a folder be opened or flushed; the file is in place anyway.
    const FileDescriptor opened(::open(folder().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.isOpen() && ::fsync(opened.get()) != 0 && errno == EIO)
        throw systemError("write", shownTarget, errno);
}

}  // namespace cinder
