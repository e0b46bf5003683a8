#pragma once

#include <sys/resource.h>

#include <filesystem>
#include <string>
#include <vector>

namespace cinder::test {

/// A folder that is there for one test.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    std::filesystem::path operator/(const std::string& name) const { return path / name; }
    /// The names of all there is in it, sorted.
    std::vector<std::string> names() const;

    std::filesystem::path path;
};

std::string bytesOf(const std::filesystem::path& path);
void putBytes(const std::filesystem::path& path, const std::string& bytes);

/// Files can't grow beyond this while it lives: the nearest thing to a full disk that needs no
/// rights to set up. The signal that comes with it is ignored.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes);
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit();

private:
    rlimit before{};
    void (*handlerBefore)(int);
};

}  // namespace cinder::test
