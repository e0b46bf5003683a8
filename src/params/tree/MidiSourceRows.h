#pragma once

#include <iterator>

#include "modulation/vocabulary/SourceParameters.h"
#include "params/tree/ParameterRow.h"

// The parameters of a MIDI source.
// A row's place is part of every saved sound: rows are never moved.

namespace cinder {

enum class MidiSourceParameter : std::int32_t {
    Input,
    ControllerNumber,
    ResponseCurve,
};
inline constexpr int numMidiSourceParameters = 3;

namespace midi_source_hints {

inline constexpr const char* input =
    "The Input setting selects the type of MIDI signal that is used to generate a modulation "
    "signal.";
inline constexpr const char* controllerNumber =
    "The Controller setting specifies the controller number which is used to generate a "
    "modulation signal. This is used only if the Input setting is set to Controller.";
inline constexpr const char* responseCurve =
    "The Response Curve setting lets you choose a curve that is applied to the incoming MIDI "
    "signal when converting it to a modulation signal.";

}  // namespace midi_source_hints

namespace midi_source_rows {

using namespace midi_source_hints;
using namespace row_words;

inline constexpr Role source = choice(midiInputNames, ParameterKind::MidiInputChoice);
inline constexpr Role curve = choice(responseCurveNames, ParameterKind::ResponseCurveChoice);

// clang-format off
inline constexpr ParameterRow midiSourceRows[] = {
    // suffix               role    from   to default  hint
    {" Input",              source,    0,   5,      0, input},
    {" Controller Number",  whole,     0, 127,      0, controllerNumber},
    {" Response Curve",     curve,     0,   5,      0, responseCurve},
};
// clang-format on

static_assert(std::size(midiSourceRows) == numMidiSourceParameters);

}  // namespace midi_source_rows

}  // namespace cinder
