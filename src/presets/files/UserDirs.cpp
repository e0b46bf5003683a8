#include "presets/files/UserDirs.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace cinder {
namespace {

using Path = std::filesystem::path;

void skipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r"), text.size()));
}

bool skip(std::string_view& text, std::string_view start) {
    if (!text.starts_with(start)) return false;
    text.remove_prefix(start.size());
    return true;
}

/// What stands before the closing quote; nothing where there is none.
std::string quotedText(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) ++i;
        plain += text[i];
        if (i + 1 == text.size()) return {};
    }
    return plain;
}

Path folderIn(std::string_view line, std::string_view name, const Path& home) {
    skipBlanks(line);
    if (!skip(line, name)) return {};
    skipBlanks(line);
    if (!skip(line, "=")) return {};
    skipBlanks(line);
    if (!skip(line, "\"")) return {};
    const bool isBelowHome = skip(line, "$HOME");
    if (isBelowHome && !line.starts_with('/') && !line.starts_with('"')) return {};
    if (line.find('"') == std::string_view::npos) return {};
    const std::string text = quotedText(line);
    if (isBelowHome) return home.empty() ? Path() : home / Path(text).relative_path();
    return text.starts_with('/') ? Path(text) : Path();
}

}  // namespace

Path userDirectory(std::string_view content, std::string_view name, const Path& home) {
    Path folder;
    while (!content.empty()) {
        const std::size_t length = std::min(content.find('\n'), content.size());
        const Path found = folderIn(content.substr(0, length), name, home);
        if (!found.empty()) folder = found;
        content.remove_prefix(std::min(length + 1, content.size()));
    }
    return folder;
}

}  // namespace cinder
