#include "params/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace cinder {

namespace {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The number at the front of a format, 0 where none stands; it is taken off.
int takeCount(std::string_view& format) {
    int count = 0;
    for (; !format.empty() && isDigit(format.front()); format.remove_prefix(1))
        count = std::min(count * 10 + (format.front() - '0'), 1000);
    return count;
}

bool takeIf(std::string_view& text, char wanted) {
    if (text.empty() || text.front() != wanted) return false;
    text.remove_prefix(1);
    return true;
}

/// What printf does with one conversion, but with a point in every locale.
std::string converted(double x, bool showsPlus, int precision, char conversion) {
    constexpr int maxPrecision = 40;
    std::array<char, 128> digits;  // 39 in front of the point for the largest float
    const std::chars_format style = conversion == 'e'   ? std::chars_format::scientific
                                    : conversion == 'g' ? std::chars_format::general
                                                        : std::chars_format::fixed;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), x, style,
                                   std::min(precision, maxPrecision))
                         .ptr;
    std::string text(digits.data(), end);
    if (showsPlus && text.front() != '-') text.insert(text.begin(), '+');
    return text;
}

/// Behind the '%'.
std::string takeConversion(std::string_view& format, double x) {
    constexpr int usualPrecision = 6;  // printf's, where a format has none
    const bool showsPlus = takeIf(format, '+');
    const int precision = takeIf(format, '.') ? takeCount(format) : usualPrecision;
    if (format.empty()) return {};
    const char conversion = format.front();
    format.remove_prefix(1);
    return converted(x, showsPlus, precision, conversion);
}

std::string printed(double x, std::string_view format) {
    std::string text;
    while (!format.empty()) {
        const char c = format.front();
        format.remove_prefix(1);
        if (c == '%' && !takeIf(format, '%'))
            text += takeConversion(format, x);
        else
            text += c;
    }
    return text;
}

/// Behind the '*'. A place is given up for each digit that comes to stand in front of the point.
std::string withPlaces(double x, std::string_view format) {
    const bool showsPlus = takeIf(format, '+');
    int precision = takeCount(format);
    const double limit = 10.0 - 0.5 * std::pow(10.0, -precision);  // would be rounded to 10
    for (double rest = std::abs(x); precision > 0 && rest >= limit; rest /= 10.0)
        --precision;
    if (format.empty()) return {};
    return converted(x, showsPlus, precision, format.front()) + printed(x, format.substr(1));
}

void dropSignOfZero(std::string& text) {
    const bool isSigned = !text.empty() && (text.front() == '-' || text.front() == '+');
    if (isSigned && text.find_first_of("123456789") == std::string::npos) text.erase(0, 1);
}

/// Digits, point and exponent of a number that no double holds: is it large rather than small?
bool isLarge(std::string_view digits) {
    const std::size_t exponentAt = std::min(digits.find_first_of("eE"), digits.size());
    const std::string_view mantissa = digits.substr(0, exponentAt);
    const auto point = static_cast<double>(std::min(mantissa.find('.'), mantissa.size()));
    const auto first = static_cast<double>(mantissa.find_first_of("123456789"));
    std::string_view rest = digits.substr(std::min(exponentAt + 1, digits.size()));
    std::int32_t exponent = 0;
    takeWholeNumber(rest, exponent);
    return point - first + exponent > 0.0;
}

}  // namespace

std::string formatNumber(float x, std::string_view format) {
    if (std::isinf(x)) return x > 0.0f ? "INF" : "-INF";
    std::string text = takeIf(format, '*') ? withPlaces(static_cast<double>(x), format)
                                           : printed(static_cast<double>(x), format);
    dropSignOfZero(text);
    return text;
}

std::string frequencyText(float hz) {
    struct Row {
        float above;
        const char* format;
    };
    constexpr Row rows[] = {{9999.95f, "%.0f"}, {999.995f, "%.1f"}, {99.9995f, "%.2f"}};
    for (const Row& row : rows)
        if (hz > row.above) return formatNumber(hz, row.format);
    return formatNumber(hz, "%.3f");
}

std::string decibelText(float decibels) {
    return decibels >= -179.9f ? formatNumber(decibels, "%+.2f") : "-INF";
}

void skipBlanks(std::string_view& text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
}

std::size_t lengthOfWord(std::string_view text) {
    return static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isBlank) - text.begin());
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return upperCase(x) == upperCase(y); });
}

bool takeNumber(std::string_view& text, float& out) {
    std::string_view rest = text;
    const bool isNegative = takeIf(rest, '-');
    if (!isNegative) takeIf(rest, '+');
    // from_chars reads words as well ("inf", "nan"), and a second sign.
    const bool isPointed = rest.size() > 1 && rest[0] == '.' && isDigit(rest[1]);
    if (rest.empty() || !(isDigit(rest[0]) || isPointed)) return false;
    double number = 0.0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    const auto length = static_cast<std::size_t>(end - rest.data());
    if (error == std::errc::result_out_of_range)
        number = isLarge(rest.substr(0, length)) ? std::numeric_limits<double>::infinity() : 0.0;
    text = rest.substr(length);
    // Too large for a float: a conversion would be undefined.
    const double magnitude = number > static_cast<double>(std::numeric_limits<float>::max())
                                 ? std::numeric_limits<double>::infinity()
                                 : number;
    out = static_cast<float>(isNegative ? -magnitude : magnitude);
    return true;
}

bool takeWholeNumber(std::string_view& text, std::int32_t& out) {
    std::string_view rest = text;
    const bool isNegative = takeIf(rest, '-');
    if (!isNegative) takeIf(rest, '+');
    if (rest.empty() || !isDigit(rest.front())) return false;
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    std::int64_t number = 0;
    for (; !rest.empty() && isDigit(rest.front()); rest.remove_prefix(1))
        number = std::min(number * 10 + (rest.front() - '0'), most);
    text = rest;
    out = static_cast<std::int32_t>(isNegative ? -number : number);
    return true;
}

bool readWholeNumber(std::string_view text, std::int32_t& out) {
    skipBlanks(text);
    if (!takeWholeNumber(text, out)) return false;
    skipBlanks(text);
    return text.empty();
}

}  // namespace cinder
