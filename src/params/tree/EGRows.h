#pragma once

#include <iterator>

#include "modulation/vocabulary/SourceParameters.h"
#include "params/tree/ParameterRow.h"

// The parameters of an envelope generator.
// A row's place is part of every saved sound: rows are never moved.

namespace cinder {

enum class EGParameter : std::int32_t {
    Hold,
    Delay,
    Threshold,
    Triggering,
    Attack,
    Decay,
    Sustain,
    Release,
};
inline constexpr int numEGParameters = 8;

namespace eg_hints {

inline constexpr const char* hold =
    "The Hold parameter sets the extra time that a key appears to be held down after you have "
    "released it. After releasing a key, the envelope generator pretends it is still down for "
    "the duration of the hold time. This enables you to press new keys while the previous note "
    "is still playing.";
inline constexpr const char* delay =
    "The Delay parameter delays the start of the envelope after a key has been pressed.";
inline constexpr const char* threshold =
    "The Threshold knob determines the audio threshold level at which the envelope generator "
    "will start a new envelope. You need to adjust the threshold level depending on the type "
    "of the incoming signal. The top part of the source button for the EG will show the "
    "current EG level, which will change when the EG is triggered.";
inline constexpr const char* triggering =
    "The Trigger setting determines the source that triggers the envelope generator, which can "
    "be either audio (from the normal or side chain input) or MIDI (note on events).";
inline constexpr const char* attack =
    "The Attack parameter sets the attack time, which controls how long it takes for the "
    "signal to increase when you press a key. The signal always increases from zero to the "
    "maximum value.";
inline constexpr const char* decay =
    "The Decay parameter controls how long it takes for the signal to decrease to sustain "
    "level, after the maximum value has been reached at the end of the attack stage.\n\nThe "
    "effect of the decay setting depends on the sustain level. With a low sustain level and "
    "short attack and decay times, the envelope generator produces a sharp tick whenever you "
    "press a key. With the sustain level at its maximum, the volume does not decrease at all, "
    "so the decay setting has no effect.";
inline constexpr const char* sustain =
    "The Sustain parameter sets the level that is produced when both the attack and decay "
    "stages are over, but the key is still held down.";
inline constexpr const char* release =
    "The Release parameter controls how long it takes for the signal to decrease from the "
    "current level to zero when you release a key and the hold time has elapsed.";

}  // namespace eg_hints

namespace eg_rows {

using namespace eg_hints;
using namespace row_words;

inline constexpr Scale to3s = from(0, 3, tapers::feedback), to5s = from(0, 5, tapers::feedback);
inline constexpr Scale to19s = from(0, 19, tapers::feedback);
inline constexpr Scale level = by(tapers::ratio), bentLevel = by(tapers::threshold);
inline constexpr float at24Below = levelCurve.inverse(0.063095734f);  // -24 dB
inline constexpr Role trigger = choice(triggeringNames, ParameterKind::TriggeringChoice);

// clang-format off
inline constexpr ParameterRow egRows[] = {
    // suffix       role    from to    default  hint        unit      scale
    {" Hold",       target(0), 0, 1,         0, hold,       Seconds,  to19s},
    {" Delay",      target(1), 0, 1,         0, delay,      Seconds,  to5s},
    {" Threshold",  limited,   0, 1, at24Below, threshold,  Decibels, bentLevel},
    {" Triggering", trigger,   0, 2,         0, triggering},
    {" Attack",     target(2), 0, 1,         0, attack,     Seconds,  to3s},
    {" Decay",      target(3), 0, 1,         0, decay,      Seconds,  to5s},
    {" Sustain",    target(4), 0, 1,         1, sustain,    Decibels, level},
    {" Release",    target(5), 0, 1,         0, release,    Seconds,  to5s},
};
// clang-format on

static_assert(std::size(egRows) == numEGParameters);

}  // namespace eg_rows

}  // namespace cinder
