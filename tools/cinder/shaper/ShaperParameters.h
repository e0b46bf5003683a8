#pragma once

#include "cinder/ParameterRow.h"
#include "distortion/curves/Clip.h"

#include <algorithm>
#include <array>

namespace cinder {

/// The flat ids of the shaper's parameters, which are rows of the table.
enum ShaperParameterId : int { driveId, curveId, oversamplingId, levelId, bypassId };

inline constexpr std::array<ParameterRow, 5> shaperParameterRows = {{
    // name          unit   min   max  default  choices            hint
    {"Drive", "dB", 0.0f, 48.0f, 12.0f, {}, "gain into the curve"},
    {"Curve", "", 0.0f, numCurves - 1, arcTangentCurve, curveNames, "what bends the signal"},
    {"Oversampling", "", 0.0f, 3.0f, 3.0f, oversamplingNames, "times the rate, up to 384 kHz"},
    {"Level", "dB", -48.0f, 12.0f, -9.0f, {}, "gain behind the curve"},
    {"Bypass", "", 0.0f, 1.0f, 0.0f, switchNames, "1 lets the input through"},
}};

static_assert(std::ranges::all_of(shaperParameterRows, isWhole));

}  // namespace cinder
