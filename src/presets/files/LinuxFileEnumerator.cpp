#include <filesystem>
#include <system_error>

#include "presets/files/CompareNames.h"
#include "presets/files/FileEnumerator.h"
#include "presets/files/Paths.h"

namespace cinder {
namespace {

using Iterator = std::filesystem::directory_iterator;

class LinuxFileEnumerator final : public FileEnumerator {
public:
    LinuxFileEnumerator(const std::string& pattern, bool directories)
        : namePattern(lastPathComponent(pattern)), directories(directories) {
        const std::string folder = pattern.substr(0, pattern.size() - namePattern.size());
        std::error_code failed;
        at = Iterator(nativePath(folder.empty() ? "." : folder), failed);
        if (failed) at = Iterator();
    }

    bool next() override {
        for (; at != Iterator(); advance()) {
            // By name first: to ask what a link leads to is a walk to the disk.
            current = systemPath(at->path().filename());
            if (!matchesPattern(current, namePattern) || !isWanted(*at)) continue;
            advance();
            return true;
        }
        return false;
    }

    void name(std::string& out) const override { out = current; }

private:
    bool isWanted(const std::filesystem::directory_entry& entry) const {
        std::error_code failed;
        return directories ? entry.is_directory(failed) : entry.is_regular_file(failed);
    }

    void advance() {
        std::error_code failed;
        at.increment(failed);
        if (failed) at = Iterator();
    }

    std::string namePattern;
    bool directories;
    Iterator at;
    std::string current;
};

}  // namespace

std::unique_ptr<FileEnumerator> FileEnumerator::create(const std::string& pattern,
                                                       bool directories) {
    return std::make_unique<LinuxFileEnumerator>(pattern, directories);
}

}  // namespace cinder
