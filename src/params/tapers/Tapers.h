#pragma once

#include "params/tapers/PiecewiseCurve.h"

// How a stored value becomes what the processing gets, and that what the user reads. The host's
// straight line from 0 to 1 is the stored value: all that bends stands here.

namespace cinder {

/// The four steps of a parameter's way from store to display and back; null is the identity.
struct Taper {
    using Function = float (*)(float) noexcept;

    Function toTarget = nullptr, fromTarget = nullptr;
    Function toDisplay = nullptr, fromDisplay = nullptr;
};

/// Feedback, slot levels, times of the envelopes and their threshold: fine near 0, odd.
inline constexpr PiecewiseCurve<7> levelCurve = {{
    {0.0f, 0.0f},
    {0.1f, 0.002f},
    {0.25f, 0.05f},
    {0.5f, 0.16f},
    {0.7f, 0.36f},
    {0.9f, 0.91f},
    {1.0f, 1.0f},
}};
/// Frequency of an XLFO as a share of its range.
inline constexpr PiecewiseCurve<8> frequencyCurve = {{
    {0.0f, 0.0f},
    {0.2f, 0.001f},
    {0.5f, 0.007f},
    {0.7f, 0.03f},
    {0.8f, 0.1f},
    {0.9f, 0.3f},
    {0.95f, 0.5f},
    {0.98f, 1.0f},
}};
/// Times of an envelope follower as a share of their range.
inline constexpr PiecewiseCurve<14> timeCurve = {{
    {0.0f, 0.0f},
    {0.15f, 0.02f},
    {0.2f, 0.03f},
    {0.33f, 0.05f},
    {0.4f, 0.07f},
    {0.5f, 0.1f},
    {0.6f, 0.13f},
    {0.68f, 0.17f},
    {0.75f, 0.22f},
    {0.85f, 0.35f},
    {0.9f, 0.46f},
    {0.95f, 0.66f},
    {0.98f, 0.82f},
    {1.0f, 1.0f},
}};
static_assert(levelCurve.isRising() && frequencyCurve.isRising() && timeCurve.isRising());

/// 20 log10 |x|, and -180 from 1e-10 down.
float decibelsOfRatio(float ratio) noexcept CINDER_REALTIME;
/// 10^(dB / 20)
float ratioOfDecibels(float decibels) noexcept CINDER_REALTIME;

namespace tapers {

//                              to target, and from it   to the display, and from it
extern const Taper none;
extern const Taper gain;       // 10^(x / 20), 20 log10   20 log10
extern const Taper ratio;      // -                       20 log10
extern const Taper feedback;   // level curve
extern const Taper threshold;  // level curve             20 log10
extern const Taper frequency;  // frequency curve
extern const Taper time;       // time curve
extern const Taper octaves;    // 2^x, log2
extern const Taper percent;    // -                       (x + 1) * 50, x * 0.02 - 1
/// The level of a band, -1..1, in dB: 72 dB even over the upper four fifths of the travel, -21.6 to
/// 36 with 0 dB in the middle, and below them a parabola down to silence.
extern const Taper level;

}  // namespace tapers

}  // namespace cinder
