#pragma once

#include <cstdint>
#include <string_view>

namespace cinder {

/// "KNPs" as a number: the first character is the highest byte. What is missing at the end is 0.
constexpr std::uint32_t fourCharacterCode(std::string_view characters) {
    std::uint32_t code = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        const char character = i < characters.size() ? characters[i] : '\0';
        code = code << 8 | static_cast<unsigned char>(character);
    }
    return code;
}

}  // namespace cinder
