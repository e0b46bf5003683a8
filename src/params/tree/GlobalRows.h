#pragma once

#include <iterator>

#include "params/tree/ParameterRow.h"

// The parameters that stand by themselves, in front of the sets and between them.
// A row's place is part of every saved sound: rows are never moved.

namespace cinder {

enum class GlobalTargetParameter : std::int32_t {
    InputGain,
    InputPan,
    OutputGain,
    OutputPan,
    Mix,
};
inline constexpr int numGlobalTargets = 5;

enum class GlobalChoiceParameter : std::int32_t {
    AuditionSignal,
    ChannelMode,
    AutoMuteFeedback,
    HighQuality,
    ReceiveMidi,
};
inline constexpr int numGlobalChoices = 5;

namespace global_hints {

inline constexpr const char* inputGain =
    "The combined Input Level/Pan knobs control the input gain of the plug-in. You could use "
    "this to drive the saturation section of the plug-in even harder. In Mid/Side channel "
    "processing mode, the pan ring works from mid to side instead of left to right.";
inline constexpr const char* outputGain =
    "The combined Output Level/Pan knobs control the output gain of the plug-in. You can use "
    "this to compensate any unwanted gain introduced by the saturation section. In Mid/Side "
    "stereo processing mode, the pan ring works from mid to side instead of left to right.";
inline constexpr const char* mix =
    "The Mix knob enables you to mix some of the unprocessed (dry) signal back into the output "
    "signal. Turned all the way to the left, the entire plug-in is essentially bypassed.";
inline constexpr const char* audition =
    "The Audition button selects the signal you listen to: either the output signal (normal "
    "operation), the input signal (in effect bypassing the plug-in), or the side-chain signal. "
    "The side-chain signal can be used as a trigger signal by the EG and EF modulation sources.";
inline constexpr const char* channelMode =
    "The Channel Mode button selects how the stereo channels in Cinder are used: in normal "
    "stereo mode (Left/Right) or in Mid/Side mode. Mid/Side mode lets you create a wide "
    "variety of stereo effects that are otherwise not possible.";
inline constexpr const char* autoMute =
    "When Auto-Mute Feedback is enabled, the feedback amount for each band is automatically "
    "reduced when the plug-in input becomes silent. This prevents the plug-in from "
    "self-oscillating with feedback endlessly even if there's no input.";
inline constexpr const char* highQuality =
    "The HQ (high quality) button controls oversampling of the internal distortion "
    "algorithms.\n\nDistortion processing introduces digital aliasing effects, especially when "
    "applying a lot of drive. Enabling HQ mode will drastically reduce aliasing artifacts by "
    "oversampling the internal saturation section 8 times, at the cost of using more CPU power.";

}  // namespace global_hints

namespace global_rows {

using namespace global_hints;
using namespace row_words;

inline constexpr Scale gain = by(tapers::gain);
inline constexpr Scale dryToWet = {&tapers::percent, Scale::Span{-1, 1}};
inline constexpr Role auditions = choice("Output,Input,Side Chain");
inline constexpr Role channelModes = choice("Left/Right,Mid/Side");
inline constexpr Role midiStates = choice("Disabled,Enabled", ParameterKind::MidiStateChoice);

// clang-format off
inline constexpr ParameterRow globalTargetRows[] = {
    // name                 role      from   to default  hint        unit      scale
    {"Input Gain",          target(0), -36,  36,      0, inputGain,  Decibels, gain},
    {"Input Pan",           target(1),  -1,   1,      0, inputGain},
    {"Output Gain",         target(2), -36,  36,      0, outputGain, Decibels, gain},
    {"Output Pan",          target(3),  -1,   1,      0, outputGain},
    {"Mix",                 target(4),   0, 100,    100, mix,        Percent,  dryToWet},
};

inline constexpr ParameterRow globalChoiceRows[] = {
    {"Audition Signal",     auditions,   0,   2,      0, audition},
    {"Channel Mode",        channelModes, 0,  1,      0, channelMode},
    {"Auto Mute Feedback",  toggle("Off,On"), 0, 1,   1, autoMute},
    {"High Quality",        toggle("Off,On"), 0, 1,   0, highQuality, Plain, plain, notAutomatable},
    {"Receive Midi",        midiStates,  0,   1,      0},
};
// clang-format on

static_assert(std::size(globalTargetRows) == numGlobalTargets);
static_assert(std::size(globalChoiceRows) == numGlobalChoices);

}  // namespace global_rows

}  // namespace cinder
