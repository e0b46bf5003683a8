#pragma once

#include <cstdint>
#include <limits>

#include "core/Realtime.h"

// The slopes of a crossover.

namespace cinder {

/// Named by the nominal slope in dB per octave.
enum class CrossoverSlope : std::int32_t {
    Db6 = 0,
    Db12 = 1,
    Db24 = 2,
    Db36 = 3,
    Db48 = 4,
};

struct CrossoverSlopeRow {
    CrossoverSlope slope;
    int order;        // of the low-pass and the high-pass alike
    float dbBelow;    // a slope in dB per octave below this reads as the first such row
    bool turnsPhase;  // the high-pass is inverted: s^N is negative at s = j
};

// clang-format off
inline constexpr CrossoverSlopeRow crossoverSlopes[] = {
    // slope                order  dB below                                turns
    {CrossoverSlope::Db6,   1,      9.0f,                                  false},
    {CrossoverSlope::Db12,  2,     18.0f,                                  true},
    {CrossoverSlope::Db24,  4,     30.0f,                                  false},
    {CrossoverSlope::Db36,  6,     42.0f,                                  true},
    {CrossoverSlope::Db48,  8,     std::numeric_limits<float>::infinity(), false},
};
// clang-format on
inline constexpr int numCrossoverSlopes = 5;

/// A number beyond the table reads as its nearest end.
constexpr const CrossoverSlopeRow& rowOf(CrossoverSlope slope) noexcept CINDER_REALTIME {
    const int index = static_cast<int>(slope);
    return crossoverSlopes[index < 0 ? 0 : index < numCrossoverSlopes ? index : 4];
}

/// Not a number reads as the steepest.
constexpr const CrossoverSlopeRow& rowOfSlope(float dbPerOctave) noexcept CINDER_REALTIME {
    const CrossoverSlopeRow* row = crossoverSlopes;
    while (row != crossoverSlopes + numCrossoverSlopes - 1 && !(dbPerOctave < row->dbBelow))
        ++row;
    return *row;
}

}  // namespace cinder
