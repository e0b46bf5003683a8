#include "plugin/VersionInfo.h"

#include <charconv>
#include <utility>

#include "presets/files/Paths.h"

namespace cinder {

VersionInfo::VersionInfo(std::string productName, std::string_view versionText)
    : productName(std::move(productName)) {
    const std::size_t point = versionText.find('.');
    const std::string_view digits = versionText.substr(0, point);
    std::from_chars(digits.data(), digits.data() + digits.size(), major);
    if (point == std::string_view::npos) return;
    const std::string behind(versionText.substr(point + 1));
    minor = behind.substr(0, 1);
    if (behind.size() > 1) revision = behind.substr(1);
}

std::string VersionInfo::text() const {
    std::string text = std::to_string(major);
    text += '.';
    return text.append(minor).append(revision);
}

std::string VersionInfo::versionedName() const {
    return cinder::versionedName(productName, major);
}

}  // namespace cinder
