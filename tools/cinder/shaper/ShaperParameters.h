#pragma once

#include "distortion/curves/Clip.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace cinder {

/// One parameter as the command line shows it. A stepped one has choices, and its values are their
/// numbers from 0.
struct ParameterRow {
    const char* name;
    const char* unit;
    float minimum, maximum, defaultValue;
    std::span<const char* const> choices;
    const char* hint;
};

/// The flat ids of the shaper's parameters, which are rows of the table.
enum ShaperParameterId : int { driveId, curveId, oversamplingId, levelId, bypassId };

inline constexpr const char* oversamplingNames[] = {"1", "2", "4", "8"};  // 2 to the power of index
inline constexpr const char* switchNames[] = {"0", "1"};

inline constexpr std::array<ParameterRow, 5> shaperParameterRows = {{
    // name          unit   min   max  default  choices            hint
    {"Drive", "dB", 0.0f, 48.0f, 12.0f, {}, "gain into the curve"},
    {"Curve", "", 0.0f, numCurves - 1, arcTangentCurve, curveNames, "what bends the signal"},
    {"Oversampling", "", 0.0f, 3.0f, 3.0f, oversamplingNames, "times the rate, up to 384 kHz"},
    {"Level", "dB", -48.0f, 12.0f, -9.0f, {}, "gain behind the curve"},
    {"Bypass", "", 0.0f, 1.0f, 0.0f, switchNames, "1 lets the input through"},
}};

/// The default lies in the range, and a stepped row has as many choices as steps.
constexpr bool isWhole(const ParameterRow& row) {
    if (!(row.minimum <= row.defaultValue && row.defaultValue <= row.maximum)) return false;
    if (row.choices.empty()) return true;
    return row.minimum == 0.0f && row.choices.size() == static_cast<std::size_t>(row.maximum) + 1;
}
static_assert(std::ranges::all_of(shaperParameterRows, isWhole));

}  // namespace cinder
