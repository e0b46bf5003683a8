#include "cinder/audio/ReplacementFile.h"

#include "cinder/audio/UserError.h"
#include "core/platform/UnfinishedFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace cinder {

namespace {

std::filesystem::path followLinks(const std::filesystem::path& path) {
    int error = 0;
    auto followed = platform::followLinks(path, error);
    if (error != 0) throw systemError("write", path, error);
    return followed;
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
    descriptor = FileDescriptor(platform::createUnfinished(target, unfinished));
    if (!descriptor.isOpen()) throw systemError("write", shownTarget, errno);
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
    if (!platform::flushToDisk(descriptor.get())) fail();
    if (!descriptor.close()) fail();
    throwIfFailed();
    if (::rename(unfinished.c_str(), target.c_str()) != 0)
        throw systemError("write", shownTarget, errno);
    unfinished.clear();
    if (!platform::flushFolder(platform::folderOf(target)))
        throw systemError("write", shownTarget, errno);
}

void ReplacementFile::inheritRights() {
    struct stat status {};
    if (::stat(target.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return;
    if (!platform::inheritRights(descriptor.get(), status)) fail();
}

}  // namespace cinder
