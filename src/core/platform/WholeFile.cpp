#include "core/platform/WholeFile.h"

#include "core/platform/UnfinishedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace cinder::platform {

namespace {

using Path = std::filesystem::path;

class Descriptor {
public:
    explicit Descriptor(int number) : number(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    int get() const { return number; }
    bool isOpen() const { return number >= 0; }
    /// False where the system only now finds that a write has failed.
    bool close() {
        const int closed = std::exchange(number, -1);
        return closed < 0 || ::close(closed) == 0;
    }

private:
    int number;
};

/// Removes the unfinished file, unless it has been renamed.
class Unfinished {
public:
    explicit Unfinished(Path path) : path(std::move(path)) {}
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
    ~Unfinished() {
        if (!path.empty()) ::unlink(path.c_str());
    }
    bool renameTo(const Path& target) {
        if (::rename(path.c_str(), target.c_str()) != 0) return false;
        path.clear();
        return true;
    }

private:
    Path path;
};

/// Writes `bytes` to a file of its own beside `target` and puts it in its place.
bool replace(const Path& target, const struct stat* old, std::string_view bytes) {
    Path path;
    Descriptor file(createUnfinished(target, path));
    if (!file.isOpen()) return false;
    Unfinished unfinished(std::move(path));
    // The data must be on the disk before the name is: a crash in between would otherwise leave an
    // empty file where a whole one was.
    if (!writeAll(file.get(), bytes) || (old && !inheritRights(file.get(), *old)) ||
        !flushToDisk(file.get()) || !file.close() || !unfinished.renameTo(target))
        return false;
    flushFolder(folderOf(target));
    return true;
}

}  // namespace

bool writeWholeFile(const Path& path, std::string_view bytes) {
    int error = 0;
    const Path target = followLinks(path, error);
    if (!target.has_filename()) return false;
    struct stat old {};
    if (::stat(target.c_str(), &old) != 0)
        return errno == ENOENT && replace(target, nullptr, bytes);
    // A rename onto a write-protected file would succeed, but not as its owner meant it.
    if (!S_ISREG(old.st_mode) || ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        return false;
    return replace(target, &old, bytes);
}

std::optional<std::string> readWholeFile(const Path& path, std::size_t maxBytes) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
    // The size may change while we read, and some file systems tell 0 for all their files.
    constexpr std::size_t piece = 65536;
    std::string bytes;
    for (std::size_t length = 0;;) {
        if (length > maxBytes) return {};
        bytes.resize(length + piece);
        const ssize_t got = ::read(file.get(), bytes.data() + length, piece);
        if (got < 0 && errno != EINTR) return {};
        if (got > 0) length += static_cast<std::size_t>(got);
        if (got == 0) {
            bytes.resize(length);
            return bytes;
        }
    }
}

}  // namespace cinder::platform
