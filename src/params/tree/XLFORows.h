#pragma once

#include <iterator>

#include "modulation/vocabulary/SourceParameters.h"
#include "params/tree/ParameterRow.h"

// The parameters of an XLFO and of one of its steps.
// A row's place is part of every saved sound: rows are never moved.

namespace cinder {

enum class XLFOParameter : std::int32_t {
    Frequency,
    FrequencyOffset,
    Balance,
    PhaseOffset,
    Glide,
    SyncMode,
    MidiTrigger,
    Snap,
};
inline constexpr int numXLFOParameters = 8;

enum class XLFOStepParameter : std::int32_t {
    Value,
    Glide,
    GlideFunction,
    Random,
};
inline constexpr int numXLFOStepParameters = 4;

namespace xlfo_hints {

inline constexpr const char* frequency =
    "The Frequency knob sets the speed of the wave form that is produced by the XLFO. When "
    "synchronized to the host's tempo and position (with the sync button), this knob turns "
    "into the Frequency Offset knob. The XLFO frequency setting is a modulation target.";
inline constexpr const char* frequencyOffset =
    "The Frequency Offset knob adjusts the synchronized frequency (based on the host's tempo). "
    "If you turn the knob all the way to the right, the frequency is multiplied by two, while "
    "turning the knob all the way to the left results in half of the host frequency. Using "
    "this knob, you can easily create dotted or triplets synchronization effects.\n\nClick on "
    "the small dots around the knob to quickly go to various useful offset values.";
inline constexpr const char* balance =
    "The Balance ring adjusts the balance between the first and the last half of the wave "
    "form. If Balance is not at zero, the XLFO will run more quickly through one half of the "
    "wave form than the other. For example, when you have a simple triangle wave, and you turn "
    "the Balance ring to the left, the wave form will become more sawtooth-like.\n\nTip: To "
    "reset the balance, Alt-click the ring.";
inline constexpr const char* phaseOffset =
    "With the Phase Offset slider, you can specify the point in the curve that is treated as "
    "the starting point. When you trigger the XLFO using MIDI, it will start running from "
    "here.\n\nThe phase offset is also a modulation target. This allows you to drive the XLFO "
    "using a secondary modulation source if you set the XLFO frequency to 0. You can even "
    "'flip through' the XLFO multiple times by increasing the slot level (for example, try "
    "modulating it with an XY controller and slot level at maximum).";
inline constexpr const char* glide =
    "The Glide knob controls which part of the step is used to glide from the current step's "
    "value to the next step's value. If set to the maximum (1), step values are interpolating "
    "constantly. When set to the minimum (-1), no interpolation/glide takes place at "
    "all.\n\nThis is a 'global' glide setting that is added to the per-step glide settings. "
    "The result is limited to a 0..1 range, where 0 means no interpolation and 1 means full "
    "interpolation. Setting the global glide to a negative value cancels the per-step glide "
    "settings. With the global glide at 0 (the center value), only the per-step glide settings "
    "matter. Because you can modulate the global glide, you can achieve cool effects with "
    "this.\n\nTip: To reset the glide setting, Alt-click the knob.";
inline constexpr const char* sync =
    "The Sync setting chooses between arbitrary frequency settings and synchronizing with the "
    "tempo and song position of the plug-in host. You can choose a setting in bars, between 16 "
    "bars and 1/64 bar. When you synchronize the frequency, the frequency knob can be used to "
    "introduce an offset. In this way, you can accomplish dotted or triplet synchronization, "
    "for example.";
inline constexpr const char* midiTrigger =
    "The MIDI Trigger toggle button is used to enable the triggering of the LFO by MIDI "
    "note-on messages. When a MIDI note on event is received, the XLFO will reset its position "
    "to the first step.\n\nNote: If MIDI triggering is combined with frequency "
    "synchronization, the LFO will still synchronize the frequency and song position with the "
    "host, but the relative position is changed when triggered.";
inline constexpr const char* snap =
    "With the XLFO Snap button, you make the XLFO values snap to the keyboard grid that is "
    "shown when you enable it. This way, you can create melodies when modulating the frequency "
    "parameters with the slot level at maximum (this works best with high peak values).";
inline constexpr const char* stepValue =
    "The Value knob in the step interface sets the value of the selected steps. This sets all "
    "selected steps to the same value. In contrast, if you select multiple steps and drag one "
    "of them, the relative differences between the steps are preserved.\n\nTip: To reset the "
    "value, Alt-click the knob.";
inline constexpr const char* stepGlide =
    "The Glide knob in the step interface sets an additional glide amount for each step. The "
    "glide amount controls from which part of the step the XLFO glides to the next "
    "step.\n\nThis per-step glide value is added to the global XLFO Glide value, and limited "
    "to a 0..1 range, where 0 means no interpolation and 1 means full interpolation.";
inline constexpr const char* stepCurve =
    "The Glide Curve setting selects the curve type that is used to glide from this step to "
    "the next step. The amount of gliding is set by the global and per-step Glide "
    "settings.\n\nTip: You can set the curve for multiple steps by selecting them with "
    "Shift-click or Ctrl-click.";
inline constexpr const char* stepRandom =
    "The Random switch toggles random mode for this step. If enabled, the step value is chosen "
    "randomly every time the step is used.";

}  // namespace xlfo_hints

namespace xlfo_rows {

using namespace xlfo_hints;
using namespace row_words;

inline constexpr Scale hertz = from(0.02f, 500, tapers::frequency);
inline constexpr Scale octaves = by(tapers::octaves);
inline constexpr float at1Hz = 0.24800392f;

inline constexpr Role syncMode = choice(syncModeNames, ParameterKind::SyncModeChoice);
inline constexpr Role glideFunction = choice(glideCurveNames, ParameterKind::GlideCurveChoice);

// clang-format off
inline constexpr ParameterRow xlfoRows[] = {
    // suffix             role         from  to default  hint             unit   scale
    {" Frequency",        target(0),      0, 1,   at1Hz, frequency,       Hertz, hertz},
    {" Frequency Offset", smoothed,      -1, 1,       0, frequencyOffset, Plain, octaves},
    {" Balance",          limited,        0, 1,    0.5f, balance},
    {" Phase Offset",     target(2),      0, 1,       0, phaseOffset},
    {" Glide",            target(1),     -1, 1,       0, glide},
    {" Sync Mode",        syncMode,       0, 11,      0, sync},
    {" MIDI Trigger",     toggle("Off,On"), 0, 1,     0, midiTrigger},
    {" Snap",             toggle("No Snap,Snap"), 0, 1, 0, snap},
};

inline constexpr ParameterRow xlfoStepRows[] = {
    {" Value",            limited,       -1, 1,       0, stepValue},
    {" Glide",            limited,        0, 1,       0, stepGlide},
    {" Glide function",   glideFunction,  0, 3,       0, stepCurve},
    {" Random",           toggle("Fixed,Random"), 0, 1, 0, stepRandom},
};
// clang-format on

static_assert(std::size(xlfoRows) == numXLFOParameters);
static_assert(std::size(xlfoStepRows) == numXLFOStepParameters);

}  // namespace xlfo_rows

}  // namespace cinder
