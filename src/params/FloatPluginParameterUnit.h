#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "params/FloatDisplay.h"

namespace cinder {

/// A unit: how numbers of its kind are shown, and which words may stand behind a typed one.
/// State   none; all units are constants that live as long as the module
struct FloatPluginParameterUnit {
    struct Alias {
        const char* word;
        float factor = 1.0f;
        FloatDisplay::Function convert = nullptr;  // behind the factor; null is the identity
    };

    const char* word;  // shown behind the number, and the first word that may be typed
    std::span<const Alias> aliases = {};
    /// Reads a text that does not begin with a number; null: there is none.
    bool (*parseSpecial)(std::string_view text, float& out) = nullptr;

    // What `apply` puts into a parameter's display; null leaves as it is what stands there.
    FloatDisplay::TextFunction customText = nullptr;
    const char* format = nullptr;
    const char* separator = nullptr;
    FloatDisplay::Function toDisplay = nullptr;
    FloatDisplay::Function fromDisplay = nullptr;

    void apply(FloatDisplay& display) const;
    /// A typed number with one of the unit's words behind it, whatever its case, in the unit
    /// itself.
    std::optional<float> convert(float number, std::string_view typedWord) const;
};

namespace units {

extern const FloatPluginParameterUnit hz;
extern const FloatPluginParameterUnit expFreq;  // shows 2^x Hz
extern const FloatPluginParameterUnit ms;
extern const FloatPluginParameterUnit sec;
extern const FloatPluginParameterUnit dB;
extern const FloatPluginParameterUnit dBTP;
extern const FloatPluginParameterUnit dBRange;  // a distance in dB: no sign, no infinity
extern const FloatPluginParameterUnit octaves;  // shown in semitones
extern const FloatPluginParameterUnit percent;
extern const FloatPluginParameterUnit ratio;
extern const FloatPluginParameterUnit slope;

/// Those that can be asked for by the word they show, in the order in which they are searched.
std::span<const FloatPluginParameterUnit* const> listed();
/// Null for a word that no listed unit shows.
const FloatPluginParameterUnit* find(std::string_view displayWord);

}  // namespace units

}  // namespace cinder
