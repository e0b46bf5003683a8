#pragma once

#include <iterator>

#include "params/tree/ParameterRow.h"

// The parameters of an XY controller.
// A row's place is part of every saved sound: rows are never moved.

namespace cinder {

enum class XYParameter : std::int32_t {
    Hor,
    Ver,
};
inline constexpr int numXYParameters = 2;

namespace xy_hints {

inline constexpr const char* both =
    "The XY controller gives you a way to easily control multiple parameters with just one "
    "mouse movement. You can hook up the X and Y axis to almost all parameters, simply by "
    "dragging the X and Y source drag buttons to any modulation target. \n\nThe 'target' icon "
    "in the XY controller visualizes the current value. However, you can click and drag "
    "anywhere, not just on the icon.\n\nAlt-click the XY controller to reset the current "
    "value. Hold down Ctrl while dragging for fine-tuning.\n\nTip: You can also associate an "
    "XY controller with your external MIDI Controller using MIDI Learn.";

}  // namespace xy_hints

namespace xy_rows {

using namespace xy_hints;
using namespace row_words;

// clang-format off
inline constexpr ParameterRow xyRows[] = {
    // suffix   role  from to default hint
    {" Hor", smoothed,  -1, 1,      0, both},
    {" Ver", smoothed,  -1, 1,      0, both},
};
// clang-format on

static_assert(std::size(xyRows) == numXYParameters);

}  // namespace xy_rows

}  // namespace cinder
