#include "presets/files/Paths.h"

#include <sys/stat.h>

#include <cstddef>
#include <optional>
#include <system_error>

#include "core/Utf8.h"
#include "core/platform/UserFolders.h"
#include "core/platform/WholeFile.h"
#include "presets/files/UserDirs.h"

namespace cinder {
namespace {

using Path = std::filesystem::path;

constexpr std::string_view maker = "Kestrelon\\";
constexpr std::size_t maxUserDirsBytes = std::size_t{1} << 20;

// U+F000 + byte is EF 80+h 80+l in UTF-8, where h and l are the byte's upper two and lower six
// bits. The characters lie in the area that is nobody's, so that no real name is likely to have
// one.
constexpr char standInLead = '\xef';
constexpr std::size_t standInSize = 3;

std::string standInFor(unsigned char byte) {
    return {standInLead, static_cast<char>(0x80 | (byte >> 6)),
            static_cast<char>(0x80 | (byte & 0x3f))};
}

/// The byte whose stand-in is in front, or 0. Bytes other than these never need one.
unsigned char byteOfStandIn(std::string_view text) {
    if (text.size() < standInSize || text[0] != standInLead) return 0;
    const unsigned high = static_cast<unsigned char>(text[1]) ^ 0x80u;
    const unsigned low = static_cast<unsigned char>(text[2]) ^ 0x80u;
    if (high > 3 || low > 0x3f) return 0;
    const unsigned byte = high << 6 | low;
    return byte == '\\' || byte >= 0x80 ? static_cast<unsigned char>(byte) : 0;
}

bool isSameFile(const struct stat& target, const Path& folder) {
    struct stat status {};
    return ::stat(folder.c_str(), &status) == 0 && status.st_dev == target.st_dev &&
           status.st_ino == target.st_ino;
}

/// The folder of our files below one that the system gave us.
std::string ownFolder(const std::string& above, std::string_view name) {
    if (above.empty()) return {};
    return withTrailingBackslash(above) + std::string(maker) + std::string(name) + '\\';
}

}  // namespace

Path nativePath(std::string_view path) {
    std::string native;
    native.reserve(path.size());
    for (std::size_t at = 0; at < path.size();) {
        if (path[at] == '\0') return {};
        const unsigned char byte = byteOfStandIn(path.substr(at));
        native += byte != 0 ? static_cast<char>(byte) : path[at] == '\\' ? '/' : path[at];
        at += byte != 0 ? standInSize : 1;
    }
    return native;
}

std::string systemPath(const Path& path) {
    const std::string_view native = path.native();
    std::string inner;
    inner.reserve(native.size() + 1);
    for (std::size_t at = 0; at < native.size();) {
        const std::string_view rest = native.substr(at);
        const std::size_t length = utf8Length(rest);
        const bool isPlain = length > 0 && rest[0] != '\\' && byteOfStandIn(rest) == 0;
        if (isPlain)
            inner += rest[0] == '/' ? "\\" : rest.substr(0, length);
        else
            inner += standInFor(static_cast<unsigned char>(rest[0]));
        at += isPlain ? length : 1;
    }
    return inner;
}

std::string withTrailingBackslash(std::string path) {
    if (!path.empty() && path.back() != '\\') path += '\\';
    return path;
}

std::string withoutTrailingBackslash(std::string path) {
    if (path.ends_with('\\')) path.pop_back();
    return path;
}

std::string lastPathComponent(std::string_view path) {
    return std::string(path.substr(path.rfind('\\') + 1));
}

std::string removeExtension(std::string_view path) {
    const std::size_t dot = path.rfind('.');
    if (dot == std::string_view::npos) return std::string(path);
    // A dot in the name of a folder ends nothing.
    if (path.find('\\', dot) != std::string_view::npos) return std::string(path);
    return std::string(path.substr(0, dot));
}

bool createFolders(std::string_view path) {
    std::error_code ignored;
    std::filesystem::create_directories(nativePath(path), ignored);
    return folderExists(path);
}

bool folderExists(std::string_view path) {
    std::error_code ignored;
    return std::filesystem::is_directory(nativePath(path), ignored);
}

bool fileExists(std::string_view path) {
    std::error_code ignored;
    const auto status = std::filesystem::status(nativePath(path), ignored);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

bool isCircularLink(std::string_view path) {
    const Path link = nativePath(withoutTrailingBackslash(std::string(path)));
    struct stat status {};
    if (::lstat(link.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return false;
    if (::stat(link.c_str(), &status) != 0) return false;
    for (Path folder = link.parent_path();; folder = folder.parent_path()) {
        if (folder.empty()) return isSameFile(status, ".");
        if (isSameFile(status, folder)) return true;
        if (!folder.has_relative_path()) return false;
    }
}

std::string documentsFolder() {
    const Path home = platform::homeFolder();
    const Path config = platform::configFolder();
    std::optional<std::string> content;
    if (!config.empty())
        content = platform::readWholeFile(config / "user-dirs.dirs", maxUserDirsBytes);
    Path folder = userDirectory(content.value_or(""), "XDG_DOCUMENTS_DIR", home);
    if (folder.empty() && !home.empty()) folder = home / "Documents";
    return withTrailingBackslash(systemPath(folder));
}

std::string applicationDataFolder(std::string_view name) {
    return ownFolder(systemPath(platform::dataFolder()), name);
}

std::string defaultPresetFolder(std::string_view name) {
    return ownFolder(documentsFolder(), name);
}

std::string versionedName(std::string_view product, int major) {
    std::string name(product);
    if (major > 1) name += ' ' + std::to_string(major);
    return name;
}

std::string registryKeyPath(std::string_view product, int major) {
    return "Software\\" + std::string(maker) + std::string(product) + '\\' + std::to_string(major) +
           ".0";
}

}  // namespace cinder
