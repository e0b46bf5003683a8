#pragma once

#include <string>
#include <string_view>

namespace cinder {

/// What product runs, and in which version. A version text is a major number, a point, one
/// character of a minor number, and a revision: 1.20 is major 1, minor 2, revision 0.
struct VersionInfo {
    VersionInfo(std::string productName, std::string_view versionText);

    /// "1.20"
    std::string text() const;
    /// "Cinder" in version 1, "Cinder 2" in version 2: folders bear this name.
    std::string versionedName() const;

    std::string productName;
    int major = 1;
    std::string minor, revision;
};

}  // namespace cinder
