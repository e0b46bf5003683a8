#pragma once

#include <cstddef>
#include <span>

namespace cinder {

/// A file that was built into the program.
struct EmbeddedFile {
    const char* name;  ///< in capitals, without an ending
    const unsigned char* bytes;
    std::size_t size;
};

/// All of them. The list is written by cinder_embed() of cmake/CinderEmbed.cmake.
std::span<const EmbeddedFile> embeddedFiles();

}  // namespace cinder
