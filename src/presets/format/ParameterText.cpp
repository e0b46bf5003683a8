#include "presets/format/ParameterText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <limits>

#include "core/Constants.h"
#include "params/AbstractPluginParameter.h"
#include "params/FloatPluginParameter.h"
#include "params/NumberText.h"

namespace cinder {

namespace {

constexpr std::string_view storedWord = "stored ";

/// As names are compared: a dash spares a shell's user the quotes.
constexpr bool isSameLetter(char a, char b) {
    return upperCase(a == '-' ? ' ' : a) == upperCase(b == '-' ? ' ' : b);
}

std::optional<float> storedValue(std::string_view text) {
    if (text.size() < storedWord.size() ||
        !equalsIgnoringCase(text.substr(0, storedWord.size()), storedWord))
        return {};
    text.remove_prefix(storedWord.size());
    skipBlanks(text);
    float number = 0.0f;
    if (!takeNumber(text, number)) return {};
    skipBlanks(text);
    return text.empty() ? std::optional(number) : std::nullopt;
}

/// As short as it can be without becoming another float.
std::string shortestText(float number) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number);
    return std::string(text.data(), end.ptr);
}

bool means(const AbstractPluginParameter& parameter, const std::string& text, float value) {
    return valueOfText(parameter, text) == value;
}

/// The number on the display, longer than it is shown, or one right beside it: the way back to the
/// stored value rounds as well.
std::string longText(const FloatPluginParameter& parameter, float value) {
    std::string unit;
    if (!parameter.display.label.empty())
        unit.append(parameter.display.separator.get()).append(parameter.display.label);
    const float shown = parameter.displayFromValue(value);
    if (!std::isfinite(shown)) return {};
    for (const char* format : {"%.0f", "%.1f", "%.2f", "%.3f", "%.4f", "%.5f", "%.6f", "%.7f"}) {
        const std::string text = formatNumber(shown, format) + unit;
        if (means(parameter, text, value)) return text;
    }
    float below = shown, above = shown;
    constexpr int reach = 4;
    for (int step = 0; step <= reach; ++step) {
        for (const float candidate : {below, above}) {
            const std::string text = shortestText(candidate) + unit;
            if (means(parameter, text, value)) return text;
        }
        below = std::nextafter(below, -std::numeric_limits<float>::infinity());
        above = std::nextafter(above, std::numeric_limits<float>::infinity());
    }
    return {};
}

}  // namespace

AbstractPluginParameter* parameterNamed(const GenericParameterOwner& owner, std::string_view name) {
    for (int id = 0; id < owner.parameterCount(); ++id) {
        const std::string& candidate = owner.parameter(id)->getName();
        if (std::ranges::equal(candidate, name, isSameLetter) || std::to_string(id) == name)
            return owner.parameter(id);
    }
    return nullptr;
}

std::string noSuchParameter(const GenericParameterOwner& owner, std::string_view name) {
    constexpr int enough = 5;
    int found = 0;
    std::string names;
    for (int id = 0; !name.empty() && id < owner.parameterCount() && found < enough; ++id) {
        const std::string& candidate = owner.parameter(id)->getName();
        // Not of std::ranges, which clang 14 can't compile from the library of g++ 12.
        if (std::search(candidate.begin(), candidate.end(), name.begin(), name.end(),
                        isSameLetter) != candidate.end())
            names += (found++ == 0 ? "" : ", ") + candidate;
    }
    return "there is no parameter \"" + std::string(name) + "\"; " +
           (names.empty() ? "`cinder params` lists them" : "did you mean " + names + "?");
}

std::optional<float> valueOfText(const AbstractPluginParameter& parameter, std::string_view text) {
    if (const auto stored = storedValue(text)) return settledValue(parameter, *stored);
    float value = 0.0f;
    // A note may lie out of range; what is stored does not.
    if (parameter.parseText(text, value)) return settledValue(parameter, value);
    for (const float end : {parameter.minimum(), parameter.maximum()})
        if (equalsIgnoringCase(text, parameter.text(end))) return end;
    return {};
}

std::string noSuchValue(const AbstractPluginParameter& parameter, std::string_view text) {
    return std::string("\"").append(text) + "\" is no value of " + parameter.getName() +
           "; its default reads \"" + parameter.text(parameter.defaultValue()) + "\"";
}

std::string exactText(const AbstractPluginParameter& parameter, float value) {
    std::string text = parameter.text(value);
    if (means(parameter, text, value)) return text;
    if (const auto* const continuous = dynamic_cast<const FloatPluginParameter*>(&parameter))
        text = longText(*continuous, value);
    if (!text.empty() && means(parameter, text, value)) return text;
    return std::string(storedWord).append(shortestText(value));
}

float settledValue(const AbstractPluginParameter& parameter, float value) {
    if (std::isnan(value)) return parameter.defaultValue();
    value = std::clamp(value, parameter.minimum(), parameter.maximum());
    if (parameter.isDiscrete()) value = std::trunc(value);
    // So small a step changes nothing.
    const float unchanged = parameter.defaultValue();
    if (std::abs(value - unchanged) <= sameValue) return unchanged;
    return value + 0.0f;  // -0 becomes 0
}

}  // namespace cinder
