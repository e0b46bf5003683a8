#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

// An archive: 53 bytes of header, then entries. An entry is a header of 76 bytes and what belongs
// to it: a file's zlib stream, or a folder's entries and the one that closes it. docs/files.md has
// all of it to the byte.

namespace cinder::archive {

constexpr std::string_view magic = "KS/ISB/3";
constexpr std::size_t headerBytes = 53;
constexpr std::size_t lengthOffset = 8;
constexpr std::size_t fileCountOffset = 24;
constexpr std::size_t lengthStart = 28;  // the length counts what lies behind this offset

constexpr std::size_t entryHeaderBytes = 76;
constexpr std::size_t entrySizeOffset = 68;
constexpr std::size_t maxNameBytes = 67;
constexpr std::uint32_t folderMark = 0xffffffff;  // in the place of a file's unpacked size

/// Folders within folders, the outermost one counted. Deeper ones only cost the reader's stack.
constexpr int maxNesting = 64;
/// Far above any preset; what unpacks to more is no preset but a trap.
constexpr std::uint32_t maxFileBytes = 64u << 20;

/// Can this be the name of a file and nothing else, on any system?
inline bool isGoodName(std::string_view name) {
    constexpr std::string_view separators("/\\:\0", 4);
    return !name.empty() && name.size() <= maxNameBytes && name != "." && name != ".." &&
           name.find_first_of(separators) == std::string_view::npos;
}

}  // namespace cinder::archive
