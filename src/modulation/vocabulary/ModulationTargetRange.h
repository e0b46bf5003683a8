#pragma once

#include <cstddef>
#include <iterator>

#include "modulation/vocabulary/ModulationSources.h"

namespace cinder {

/// What a target's values are limited to, and how far a slot at level 1 moves it.
/// Range   in target units: linear gain, log2 of Hz, dB of tone, seconds, Hz for an XLFO; the other
///         records are plain numbers
struct ModulationTargetRange {
    const char* name;
    float minimum, maximum;
    float defaultDepth;
    float followerDepth;     // a follower's output is unipolar, so it gets twice the way
    float snappedDepth;      // where the grid of semitones shall fall on whole steps
    bool usesSecondVariant;  // of every source; the last column of the table
    float period = 0.0f;     // above 0: the target's value is circular
    float span = 0.0f;       // above 0: reference of the ramp times instead of maximum - minimum

    constexpr float depthOf(SourceKind kind) const {
        switch (kind) {
            case SourceKind::EnvelopeFollower:
                return followerDepth;
            case SourceKind::SnappedXLFO:
                return snappedDepth;
            default:
                return defaultDepth;
        }
    }
};

enum class RangeRecord {
    Unit,
    Bipolar,
    Gain,
    Crossover,
    Level,
    Dynamics,
    Tone,
    FeedbackFrequency,
    XLFOFreq,
    XLFOGlide,
    XLFOPhaseOffset,
    EGHold,
    EGDelay,
    EGAttack,
    EGDecay,
    EGRelease,
    EFAttack,
    EFRelease,
};

// Gains reach from -36 to 36 dB, crossovers from 40 Hz to 18 kHz, the feedback's frequency from
// 10 Hz to 1 kHz. The shortest time of an envelope is 64 samples at 44.1 kHz. A phase offset's
// depth is 1 cycle where the slot's level stands in the middle of its travel, at 0.16.
// clang-format off
inline constexpr ModulationTargetRange targetRangeRecords[] = {
    // name                 minimum        maximum     depth       EF           snapped     second
    {"Unit",               0.0f,          1.0f,       1.0f,       2.0f,        1.0f,       false},
    {"Bipolar",            -1.0f,         1.0f,       2.0f,       4.0f,        2.0f,       false},
    {"Gain",               0.015848933f,  63.095734f, 63.079887f, 126.159775f, 63.079887f, false},
    {"Crossover",          5.321928f,     14.13571f,  10.0f,      20.0f,       10.0f,      true},
    {"Level",              -1.0f,         1.0f,       2.0f,       4.0f,        2.0f,       false},
    {"Dynamics",           -1.0f,         1.0f,       2.0f,       4.0f,        2.0f,       true},
    {"Tone",               -24.0f,        24.0f,      48.0f,      96.0f,       48.0f,      false},
    {"Feedback Frequency", 3.321928f,     9.965784f,  10.0f,      20.0f,       1.0f,       true},
    {"XLFO Freq",          0.02f,         500.0f,     25.0f,      50.0f,       1.0f,       true},
    {"XLFO Glide",         -1.0f,         1.0f,       2.0f,       4.0f,        2.0f,       false},
    {"XLFO Phase Offset",  -100.0f,       100.0f,     6.25f,      12.5f,       6.25f,      false},
    {"EG Hold",            0.0f,          19.0f,      9.5f,       19.0f,       9.5f,       true},
    {"EG Delay",           0.0f,          5.0f,       2.5f,       5.0f,        2.5f,       true},
    {"EG Attack",          0.0014512471f, 3.0f,       1.5f,       3.0f,        1.5f,       true},
    {"EG Decay",           0.0014512471f, 5.0f,       2.5f,       5.0f,        2.5f,       true},
    {"EG Release",         0.0014512471f, 5.0f,       2.5f,       5.0f,        2.5f,       true},
    {"EF Attack",          0.001f,        1.0f,       0.4995f,    0.999f,      0.4995f,    true},
    {"EF Release",         0.05f,         5.0f,       2.475f,     4.95f,       2.475f,     true},
};
// clang-format on
static_assert(std::size(targetRangeRecords) ==
              static_cast<std::size_t>(RangeRecord::EFRelease) + 1);

constexpr const ModulationTargetRange& rangeRecord(RangeRecord record) {
    return targetRangeRecords[static_cast<std::size_t>(record)];
}

}  // namespace cinder
