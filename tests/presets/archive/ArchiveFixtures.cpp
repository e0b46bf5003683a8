#include "presets/archive/ArchiveFixtures.h"

#include "presets/archive/Compression.h"
#include "support/TemporaryFolder.h"

namespace cinder::test {

namespace fs = std::filesystem;

Tree treeOf(const fs::path& folder) {
    Tree tree;
    for (const auto& found : fs::recursive_directory_iterator(folder)) {
        const std::string path = found.path().lexically_relative(folder).string();
        if (found.is_symlink())
            tree[path] = "-> " + fs::read_symlink(found.path()).string();
        else if (found.is_directory())
            tree[path + "/"];
        else
            tree[path] = bytesOf(found.path());
    }
    return tree;
}

std::string number(std::uint32_t value) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(value >> shift & 0xff);
    return bytes;
}

std::string entry(std::string_view name, std::string_view content, std::uint32_t unpackedSize,
                  std::uint32_t size) {
    std::string header(1, static_cast<char>(name.size()));
    header += name.substr(0, 67);
    header.resize(68, 'x');
    return header + number(size) + number(unpackedSize) + std::string(content);
}

std::string entry(std::string_view name, std::string_view content, std::uint32_t unpackedSize) {
    return entry(name, content, unpackedSize, static_cast<std::uint32_t>(content.size()));
}

std::string fileEntry(std::string_view name, std::string_view text) {
    return entry(name, archive::deflated(text), static_cast<std::uint32_t>(text.size()));
}

std::string folderEntry(std::string_view name, std::string_view entries) {
    return entry(name, std::string(entries) + entry("", "", 0), 0xffffffff);
}

std::string archiveOf(std::string_view entries) {
    return "KS/ISB/3" + std::string(45, '?') + std::string(entries) + entry("", "", 7);
}

}  // namespace cinder::test
