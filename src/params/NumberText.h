#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Numbers to text and back, the same in every locale. All [ui, host].

namespace cinder {

/// A number as a format says, which is one of
///
///     %.2f    as printf does, for f, e and g, with + and a precision; text may stand around it
///     *3f     so many significant places: 1.234, 12.34, 123.4, 1234; *+3f with a sign
///
/// Infinities read "INF" and "-INF". A zero has no sign.
std::string formatNumber(float x, std::string_view format);
/// Hz with about five places.
std::string frequencyText(float hz);
/// A signed number with two decimals; "-INF" from -179.9 down.
std::string decibelText(float decibels);

constexpr bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
void skipBlanks(std::string_view& text);
/// Bytes up to the next blank or the end.
std::size_t lengthOfWord(std::string_view text);
/// ASCII letters alone.
constexpr char upperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
bool equalsIgnoringCase(std::string_view a, std::string_view b);

/// Takes a decimal number off the front of the text: a sign or none, digits with a point or none,
/// an exponent or none. One that no float holds is infinite, or 0. False: no digits stand there,
/// and nothing has been taken.
bool takeNumber(std::string_view& text, float& out);
/// Takes a whole number with a sign or none off the front; too large a one is the largest.
bool takeWholeNumber(std::string_view& text, std::int32_t& out);
/// A whole number, blanks around it, and nothing else.
bool readWholeNumber(std::string_view text, std::int32_t& out);

}  // namespace cinder
