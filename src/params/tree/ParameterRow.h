#pragma once

#include <cstdint>
#include <optional>

#include "params/tapers/Tapers.h"

// A parameter as a row of a table. The tables of the tree stand in the files of its sets, and
// nothing else says what a parameter is; but a slot's, which steer the matrix, are set up by
// ModulationSlotParameterSet, and the count of a list by the list.

namespace cinder {

/// What becomes of a value, which is the class of the parameter.
enum class ParameterKind : std::int32_t {
    Target,    ///< the base of a modulation target
    Smoothed,  ///< a control value with a ramp
    Limited,   ///< a property with limits
    Whole,     ///< a property: a whole number or a choice without a type of its own
    Switch,    ///< a property: false or true
    MidiStateChoice,
    SoloMuteChoice,
    SyncModeChoice,
    GlideCurveChoice,
    TriggeringChoice,
    MidiInputChoice,
    ResponseCurveChoice,
};
inline constexpr int numParameterKinds = 12;

/// Kind, and what only that kind has.
struct Role {
    ParameterKind kind;
    int target = -1;                // place among the modulation targets of its set; -1 for none
    const char* choices = nullptr;  // names of the steps, with commas between
};

/// What the straight line from minimum to maximum goes through.
struct Scale {
    const Taper* taper = &tapers::none;
    struct Span {
        float low, high;
    };
    std::optional<Span> target = {};   // what the processing gets at the ends
    std::optional<Span> display = {};  // what the ends read as
};

/// How a number reads.
enum class RowUnit : std::int32_t {
    Plain,
    Decibels,
    Percent,
    LongPercent,  ///< with three decimals and a blank before the sign
    Hertz,
    Log2Hertz,  ///< stored as log2 of Hz
    Seconds,
};

struct ParameterRow {
    const char* suffix;  // behind the name of its set
    Role role;
    float minimum, maximum, defaultValue;  // as stored
    const char* hint = nullptr;
    RowUnit unit = RowUnit::Plain;
    Scale scale = {};
    bool automatable = true;
};

/// The words of the tables.
namespace row_words {

using enum RowUnit;

constexpr Role target(int place) {
    return {ParameterKind::Target, place};
}
inline constexpr Role smoothed = {ParameterKind::Smoothed};
inline constexpr Role limited = {ParameterKind::Limited};
inline constexpr Role whole = {ParameterKind::Whole};
constexpr Role choice(const char* names, ParameterKind kind = ParameterKind::Whole) {
    return {kind, -1, names};
}
constexpr Role toggle(const char* names) {
    return choice(names, ParameterKind::Switch);
}

inline constexpr bool notAutomatable = false;

inline constexpr Scale plain = {};
constexpr Scale by(const Taper& taper) {
    return {&taper};
}
/// A share of the span, by a taper.
constexpr Scale from(float low, float high, const Taper& taper) {
    return {&taper, Scale::Span{low, high}};
}
/// 0..1 reads as 0..100.
constexpr Scale percentOf(const Taper& taper = tapers::none) {
    return {&taper, {}, Scale::Span{0.0f, 100.0f}};
}

}  // namespace row_words

}  // namespace cinder
