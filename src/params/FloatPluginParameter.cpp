#include "params/FloatPluginParameter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/Constants.h"
#include "params/FloatPluginParameterUnit.h"
#include "params/NumberText.h"

namespace cinder {

namespace {

/// Where there is no span to be stretched, everything is moved.
float scaleBetween(float from, float to) {
    return from != 0.0f ? to / from : 1.0f;
}

}  // namespace

FloatPluginParameter::FloatPluginParameter(GenericParameterOwner* owner, std::string name,
                                           FloatRange range)
    : TypedPluginParameter<float>(owner, std::move(name), false), range(range), stored(0.0f) {
    setRange(range);
}

void FloatPluginParameter::setRange(FloatRange newRange) {
    range = newRange;
    stored.store(limited(range.defaultValue), std::memory_order_relaxed);
}

void FloatPluginParameter::setDisplayRange(float low, float high) {
    const float first = targetValue(range.minimum);
    display.displayScale = scaleBetween(targetValue(range.maximum) - first, high - low);
    display.displayOffset = low - display.displayScale * first;
}

void FloatPluginParameter::setTargetRange(float low, float high) {
    display.targetScale = scaleBetween(range.maximum - range.minimum, high - low);
    display.targetOffset = low - range.minimum * display.targetScale;
    display.displayScale = 1.0f;
    display.displayOffset = 0.0f;
}

void FloatPluginParameter::setUnit(const FloatPluginParameterUnit& newUnit) {
    setUnitWords(newUnit);
    newUnit.apply(display);
}

void FloatPluginParameter::setUnitWords(const FloatPluginParameterUnit& newUnit) {
    unit = &newUnit;
    display.label = newUnit.word;
}

/// Written so that a NaN ends at the minimum.
float FloatPluginParameter::limited(float value) const noexcept CINDER_REALTIME {
    if (!(value >= range.minimum)) return range.minimum;
    return value > range.maximum ? range.maximum : value;
}

float FloatPluginParameter::normalize(float value) const noexcept CINDER_REALTIME {
    const float span = range.maximum - range.minimum;
    return span > 0.0f ? (value - range.minimum) / span : 0.0f;
}

float FloatPluginParameter::denormalize(float normalised) const noexcept CINDER_REALTIME {
    return (range.maximum - range.minimum) * normalised + range.minimum;
}

bool FloatPluginParameter::storeValue(float newValue) noexcept CINDER_REALTIME {
    if (std::isnan(newValue)) return false;
    newValue = limited(newValue);
    if (std::abs(newValue - value()) <= sameValue) return false;
    stored.store(newValue, std::memory_order_relaxed);
    return true;
}

std::string FloatPluginParameter::text(float value) const {
    return display.text(displayFromValue(value));
}

bool FloatPluginParameter::parseText(std::string_view typed, float& out) const {
    std::string pointed(typed);
    std::replace(pointed.begin(), pointed.end(), ',', '.');
    std::string_view text = pointed;
    skipBlanks(text);
    const std::string& prefix = display.prefix;
    if (!prefix.empty() && text.starts_with(prefix)) {
        text.remove_prefix(prefix.size());
        skipBlanks(text);
    }
    float number = 0.0f;
    if (!takeNumber(text, number)) return parseUnitText(text, out);
    skipBlanks(text);
    return parseTyped(number, text.substr(0, lengthOfWord(text)), out);
}

/// A text without a number.
bool FloatPluginParameter::parseUnitText(std::string_view text, float& out) const {
    float number = 0.0f;
    if (!unit || !unit->parseSpecial || !unit->parseSpecial(text, number)) return false;
    const float value = valueFromDisplay(number);
    if (std::isnan(value)) return false;
    out = value;
    return true;
}

bool FloatPluginParameter::parseTyped(float number, std::string_view word, float& out) const {
    if (word == "%" && display.label != "%") {
        out = limited(denormalize(number * 0.01f));
        return true;
    }
    if (!word.empty() && unit) {
        const std::optional<float> converted = unit->convert(number, word);
        if (!converted) return false;
        number = *converted;
    } else if (!word.empty() && !equalsIgnoringCase(word, display.label)) {
        return false;
    }
    out = valueFromTyped(number);
    return true;
}

/// From a number in display units, which may lie anywhere.
float FloatPluginParameter::valueFromTyped(float number) const {
    const auto [low, high] =
        std::minmax({displayFromValue(range.minimum), displayFromValue(range.maximum)});
    if (!(high > 0.0f)) number = -std::abs(number);
    return limited(valueFromDisplay(std::clamp(number, low, high)));
}

}  // namespace cinder
