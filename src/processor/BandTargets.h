#pragma once

#include <cstdint>

#include "modulation/vocabulary/ModulationTargets.h"

namespace cinder {

/// The targets of a band, in their order.
enum class BandTarget : std::int32_t {
    CrossoverFrequency,
    Dynamics,
    Drive,
    DrivePan,
    Level,
    Pan,
    Bass,
    Mid,
    Treble,
    Presence,
    FeedbackAmount,
    FeedbackFrequency,
    Mix,
};

/// Bands count from 0.
constexpr int bandTarget(int band, BandTarget target) {
    return targetNumber(TargetGroupId::Band, band, static_cast<int>(target));
}

/// The targets that stand by themselves.
enum class GlobalTarget : std::int32_t { InputGain, InputPan, OutputGain, OutputPan, Mix };

}  // namespace cinder
