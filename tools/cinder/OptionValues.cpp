#include "cinder/OptionValues.h"

#include "cinder/UsageError.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <system_error>

namespace cinder {

namespace {

/// from_chars knows no leading plus; people do.
std::string_view withoutPlus(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    return text;
}

template <typename T>
std::optional<T> parseAll(std::string_view text) {
    text = withoutPlus(text);
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

/// As names are compared: a dash spares a shell's user the quotes.
char plain(char c) {
    if (c == '-') return ' ';
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::optional<double> parseNumber(std::string_view text) {
    const auto value = parseAll<double>(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

int parseWhole(std::string_view option, std::string_view text, int minimum, int maximum) {
    const auto value = parseAll<int>(text);
    if (value && *value >= minimum && *value <= maximum) return *value;
    throw UsageError(std::string(option) + " takes a whole number from " + std::to_string(minimum) +
                     " to " + std::to_string(maximum) + ", not " +
                     quoted(std::filesystem::path(text)));
}

double parseWithin(std::string_view option, std::string_view text, double minimum, double maximum) {
    const auto value = parseNumber(text);
    if (value && *value >= minimum && *value <= maximum) return *value;
    throw UsageError(std::string(option) + " takes a number from " +
                     numberText(static_cast<float>(minimum)) + " to " +
                     numberText(static_cast<float>(maximum)) + ", not " +
                     quoted(std::filesystem::path(text)));
}

std::string numberText(float value) {
    char text[32];
    const auto [end, error] = std::to_chars(text, text + sizeof text, value);
    return error == std::errc() ? std::string(text, end) : std::string("?");
}

bool isSameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return plain(x) == plain(y); });
}

}  // namespace cinder
