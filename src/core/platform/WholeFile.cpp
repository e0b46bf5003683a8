#include "core/platform/WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <random>
#include <system_error>
#include <utility>

namespace cinder::platform {

namespace {

using Path = std::filesystem::path;

constexpr int maxLinks = 40;  // as many as the kernel follows
constexpr std::size_t maxNameBytes = 255;
constexpr int maxNameTries = 100;

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

/// The name behind all links, or an empty one where they lead in a circle.
Path followLinks(Path path) {
    std::error_code failed;
    for (int link = 0; std::filesystem::is_symlink(path, failed); ++link) {
        if (link == maxLinks) return {};
        const Path next = std::filesystem::read_symlink(path, failed);
        if (failed) return {};
        path = path.parent_path() / next;  // an absolute `next` replaces all of it
    }
    return path;
}

Path folderOf(const Path& path) {
    const Path parent = path.parent_path();
    return parent.empty() ? Path(".") : parent;
}

/// `.NAME.XXXXXX.part`, with NAME cut (between characters) where the whole would be too long.
std::string unfinishedName(const std::string& name, std::random_device& random) {
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

bool flush(int descriptor) {
    while (::fsync(descriptor) != 0)
        if (errno != EINTR) return false;
    return true;
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

/// Writes `bytes` to a file of its own beside `target` and puts it in its place.
bool replace(const Path& target, const struct stat* old, std::string_view bytes) {
    const Path folder = folderOf(target);
    std::random_device random;
    for (int tries = 0; tries < maxNameTries; ++tries) {
        Path candidate = folder / unfinishedName(target.filename().string(), random);
        // Opened as any new file is, so that the umask and the folder's defaults hold.
        Descriptor file(::open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        if (!file.isOpen() && errno == EEXIST) continue;
        if (!file.isOpen()) return false;
        Unfinished unfinished(std::move(candidate));
        // The data must be on the disk before the name is: a crash in between would otherwise
        // leave an empty file where a whole one was.
        if (!writeAll(file.get(), bytes) || (old && !inheritRights(file.get(), *old)) ||
            !flush(file.get()) || !file.close() || !unfinished.renameTo(target))
            return false;
        // Not every file system lets a folder be opened or flushed; the file is in place anyway.
        const Descriptor place(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (place.isOpen()) flush(place.get());
        return true;
    }
    return false;
}

}  // namespace

bool writeWholeFile(const Path& path, std::string_view bytes) {
    const Path target = followLinks(path);
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
