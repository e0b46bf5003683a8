#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace cinder::archive {

/// A folder that is open, so that what is made in it is made in it: names of its own level only,
/// and no link is followed, whatever someone lays there meanwhile.
/// Shape   names as isGoodName() has them
/// State   a descriptor, and whether each file has to reach the disk before it bears its name. Who
///         does without flushes later
/// Errors  none, or false; what was there is still there
class OpenFolder {
public:
    enum class Flush { EachFile, Later };

    /// Links to the folder itself are followed.
    static std::optional<OpenFolder> open(const std::filesystem::path& path, Flush flush);
    OpenFolder(OpenFolder&& other) noexcept
        : descriptor(std::exchange(other.descriptor, -1)), flush(other.flush) {}
    OpenFolder& operator=(OpenFolder&&) = delete;
    ~OpenFolder();

    /// A folder within it, made where it is missing.
    std::optional<OpenFolder> subfolder(const std::string& name) const;
    /// Is anything there but a folder? A link is, wherever it leads.
    bool hasFile(const std::string& name) const;
    /// Puts the bytes in the place of the file or link, or makes the file.
    bool replaceFile(const std::string& name, std::string_view bytes) const;
    /// Makes the names in it last.
    void flushNames() const;

    int get() const { return descriptor; }

private:
    OpenFolder(int descriptor, Flush flush) : descriptor(descriptor), flush(flush) {}
    int createUnfinished(const std::string& target, std::string& unfinished) const;

    int descriptor;
    Flush flush;
};

}  // namespace cinder::archive
