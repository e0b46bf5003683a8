#include "plugin/settings/SettingSerializer.h"

#include <charconv>
#include <cmath>
#include <optional>

namespace cinder {
namespace {

template <typename Number>
std::optional<Number> wholeNumber(const std::string& text) {
    Number number = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    if (error != std::errc() || end != last) return {};
    return number;
}

std::string textOf(double number) {
    char digits[32];
    // As "%.15g", without the decimal comma that a host may have set for its own texts.
    const auto written =
        std::to_chars(digits, digits + sizeof(digits), number, std::chars_format::general, 15);
    return {digits, written.ptr};
}

}  // namespace

bool SettingSerializer::boolValue(const std::string& name, bool value, bool fallback) {
    return intValue(name, value ? 1 : 0, fallback ? 1 : 0) != 0;
}

double SettingSerializer::doubleValue(const std::string& name, double value, double fallback) {
    const std::string text = textOf(value);
    const std::string fallbackText = textOf(fallback);
    const std::string answer = stringValue(name, text, fallbackText);
    // The text has fewer digits than the number: what did not come from the store stays exact.
    if (isWriter()) return value;
    if (answer == fallbackText) return fallback;
    const auto stored = wholeNumber<double>(answer);
    return stored && std::isfinite(*stored) ? *stored : fallback;
}

std::int32_t SettingSerializer::intValue(const std::string& name, std::int32_t value,
                                         std::int32_t fallback) {
    const std::string answer = stringValue(name, std::to_string(value), std::to_string(fallback));
    return isWriter() ? value : wholeNumber<std::int32_t>(answer).value_or(fallback);
}

}  // namespace cinder
