#pragma once

#include <iterator>

#include "params/tree/ParameterRow.h"

// The parameters of an envelope follower.
// A row's place is part of every saved sound: rows are never moved.

namespace cinder {

enum class EFParameter : std::int32_t {
    Input,
    Attack,
    Release,
};
inline constexpr int numEFParameters = 3;

namespace ef_hints {

inline constexpr const char* input =
    "The Input setting determines the input audio source which is used to generate the "
    "envelope. It can be either the normal input or the side chain input.";
inline constexpr const char* attack =
    "The Attack knob sets the attack time, which controls how long it takes for the envelope "
    "follower to react to peaks in the audio signal.";
inline constexpr const char* release =
    "The Release knob controls how long it takes for the envelope follower to decrease its "
    "output level after a peak in the signal.";

}  // namespace ef_hints

namespace ef_rows {

using namespace ef_hints;
using namespace row_words;

inline constexpr Scale to1s = from(0.001f, 1, tapers::time), to5s = from(0.05f, 5, tapers::time);

// clang-format off
inline constexpr ParameterRow efRows[] = {
    // suffix    role    from to default  hint     unit     scale
    {"Input",    choice("Normal Input,Side Chain"), 0, 1, 0, input},  // no blank: it is in use so
    {" Attack",  target(0), 0, 1,      0, attack,  Seconds, to1s},
    {" Release", target(1), 0, 1,      0, release, Seconds, to5s},
};
// clang-format on

static_assert(std::size(efRows) == numEFParameters);

}  // namespace ef_rows

}  // namespace cinder
