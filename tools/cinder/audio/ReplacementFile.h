#pragma once

#include "cinder/audio/FileDescriptor.h"

#include <cstdint>
#include <filesystem>

namespace cinder {

/// A file that takes its place only when it is whole. It grows as `.NAME.XXXXXX.part` beside its
/// target; commit() flushes it to the disk and renames it over the target, so that at every moment
/// the target is either what was there before or all of the new file.
/// Shape   a link is followed: the file it points to is replaced and the link stays. A file that
///         is replaced hands on its permissions and, where the system lets us, its owner
/// State   the position, and the first failure: after it every operation fails
/// Errors  the constructor: the folder is missing or closed to us, the target is a folder, a pipe
///         or device, or write-protected. commit(): whatever failed since. UserError both
class ReplacementFile {
public:
    explicit ReplacementFile(const std::filesystem::path& path);
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;
    /// Without a commit() the unfinished file vanishes.
    ~ReplacementFile();

    void write(const void* data, std::int64_t numBytes) noexcept;
    std::int64_t read(void* data, std::int64_t numBytes) noexcept;  ///< bytes read
    std::int64_t seek(std::int64_t offset, int whence) noexcept;    ///< the new position or -1
    std::int64_t size() noexcept;

    void throwIfFailed() const;
    void commit();

private:
    void inspectTarget();
    void createUnfinished();
    void inheritRights();
    void fail() noexcept;

    std::filesystem::path shownTarget;  // as the user named it, for messages
    std::filesystem::path target;       // with links followed
    std::filesystem::path unfinished;   // empty once it is gone
    FileDescriptor descriptor;
    int firstError = 0;
};

}  // namespace cinder
