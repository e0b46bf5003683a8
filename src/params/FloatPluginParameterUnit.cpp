#include "params/FloatPluginParameterUnit.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "params/NoteName.h"
#include "params/NumberText.h"
#include "params/tapers/Tapers.h"

namespace cinder {

namespace {

using Unit = FloatPluginParameterUnit;
using Alias = Unit::Alias;

float exp2Of(float x) noexcept {
    return std::exp2(x);
}
float log2Of(float x) noexcept {
    return std::log2(x);
}
float times12(float x) noexcept {
    return x * 12.0f;
}
float over12(float x) noexcept {
    return x * 0.083333336f;
}

constexpr Alias inHertz[] = {{"kHz", 1000.0f}, {"k", 1000.0f}};
constexpr Alias inMs[] = {{"sec", 1000.0f}, {"s", 1000.0f}};
constexpr Alias inSeconds[] = {{"s"}, {"ms", 0.001f}};
constexpr Alias inDb[] = {{"x", 1.0f, decibelsOfRatio}, {"*", 1.0f, decibelsOfRatio}};
constexpr Alias inNotes[] = {
    {"semitone"},    {"octaves", 12.0f}, {"octave", 12.0f}, {"oct", 12.0f},
    {"notes", 1.0f}, {"note", 1.0f},     {"cents", 0.01f},  {"cent", 0.01f},
};

}  // namespace

namespace units {

// clang-format off
//                        shown        words      no number      look: text     format  gap
constexpr Unit hz      = {"Hz",        inHertz,   parseNoteName, frequencyText};
constexpr Unit expFreq = {"Hz",        inHertz,   parseNoteName, frequencyText, {},     {},
                          exp2Of, log2Of};  // what the display goes through, and back
constexpr Unit ms      = {"ms",        inMs};
constexpr Unit sec     = {"sec",       inSeconds};
constexpr Unit dB      = {"dB",        inDb,      {},            decibelText};
constexpr Unit dBTP    = {"dBTP",      inDb,      {},            decibelText};
constexpr Unit dBRange = {"dB",        inDb,      {},            {},            "%.2f"};
constexpr Unit octaves = {"semitones", inNotes,   {},            {},            {},     {},
                          times12, over12};
constexpr Unit percent = {"%",         {},        {},            {},            "*3f",  ""};
constexpr Unit ratio   = {":1",        {},        {},            {},            "%.2f", ""};
constexpr Unit slope   = {"dB/oct",    {},        {},            {},            "%.1f"};
// clang-format on

namespace {
constexpr const Unit* listedUnits[] = {&hz, &ms, &sec, &dB, &dBTP, &octaves, &percent};
}

std::span<const FloatPluginParameterUnit* const> listed() {
    return listedUnits;
}

const FloatPluginParameterUnit* find(std::string_view displayWord) {
    const auto found = std::find_if(std::begin(listedUnits), std::end(listedUnits),
                                    [&](const Unit* unit) { return unit->word == displayWord; });
    return found == std::end(listedUnits) ? nullptr : *found;
}

}  // namespace units

void FloatPluginParameterUnit::apply(FloatDisplay& display) const {
    if (customText) display.customText = customText;
    if (format) display.format = format;
    if (separator) display.separator = std::string(separator);
    if (toDisplay) display.toDisplay = toDisplay;
    if (fromDisplay) display.fromDisplay = fromDisplay;
}

std::optional<float> FloatPluginParameterUnit::convert(float number,
                                                       std::string_view typedWord) const {
    if (equalsIgnoringCase(typedWord, word)) return number;
    for (const Alias& alias : aliases)
        if (equalsIgnoringCase(typedWord, alias.word)) {
            number *= alias.factor;
            return alias.convert ? alias.convert(number) : number;
        }
    return std::nullopt;
}

}  // namespace cinder
