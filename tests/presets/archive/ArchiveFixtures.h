#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace cinder::test {

/// A tree as a test sees it: path with '/' -> content; a folder's path ends in '/', a link's
/// content is "-> target".
using Tree = std::map<std::string, std::string>;

Tree treeOf(const std::filesystem::path& folder);

std::string number(std::uint32_t value);
/// One entry, right or wrong, from the parts given.
std::string entry(std::string_view name, std::string_view content, std::uint32_t unpackedSize);
std::string entry(std::string_view name, std::string_view content, std::uint32_t unpackedSize,
                  std::uint32_t size);
std::string fileEntry(std::string_view name, std::string_view text);
/// A folder of entries, with the one that closes it.
std::string folderEntry(std::string_view name, std::string_view entries);
/// The header before, and the closing entry behind.
std::string archiveOf(std::string_view entries);

inline std::unique_ptr<std::istream> streamOf(const std::string& bytes) {
    return std::make_unique<std::istringstream>(bytes);
}

}  // namespace cinder::test
