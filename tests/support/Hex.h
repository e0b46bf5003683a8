#pragma once

#include <string>
#include <string_view>

namespace cinder::test {

/// The bytes that hexadecimal digits stand for. Whatever is no digit only separates: blanks, and
/// notes in brackets.
inline std::string fromHex(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string bytes;
    int high = -1;
    bool isNote = false;
    for (const char character : text) {
        if (character == '[' || character == ']') isNote = character == '[';
        const auto digit = isNote ? std::string_view::npos : digits.find(character);
        if (digit == std::string_view::npos) continue;
        if (high < 0) {
            high = static_cast<int>(digit);
        } else {
            bytes += static_cast<char>(high * 16 + static_cast<int>(digit));
            high = -1;
        }
    }
    return bytes;
}

}  // namespace cinder::test
