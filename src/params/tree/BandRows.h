#pragma once

#include <iterator>

#include "params/tree/ParameterRow.h"

// The parameters of a band. A row's place is part of every saved sound: rows are never moved.

namespace cinder {

enum class BandParameter : std::int32_t {
    FeedbackAmount,
    FeedbackFrequency,
    Dynamics,
    Style,
    Drive,
    DrivePan,
    Bass,
    Mid,
    Treble,
    Presence,
    Mix,
    Level,
    Pan,
    Enabled,
    CrossoverFrequency,
};
inline constexpr int numBandParameters = 15;

enum class BandExtensionParameter : std::int32_t { State };

/// What a band's solo and mute buttons say.
enum class SoloMuteState : std::int32_t { Normal, Solo, Mute, SoloMute };

namespace band_hints {

inline constexpr const char* crossover =
    "The Crossover Frequency slider sets the frequency at which incoming audio is split into "
    "separate bands. Like most controls, you can double-click it to enter a frequency value "
    "directly.";
inline constexpr const char* feedbackAmount =
    "The Feedback Amount knob controls the amount of negative feedback in this band. Feedback "
    "flows from the output of the band back into its input, with a delay set by the Feedback "
    "Frequency knob, offering crazy sonic possibilities.";
inline constexpr const char* feedbackFreq =
    "The Feedback Freq knob sets the delay for feedback in this band, which changes the audible "
    "feedback frequency. Feedback flows from the output of the band back into its input depending "
    "on the Feedback Amount knob.";
inline constexpr const char* dynamics =
    "The Dynamics knob increases or decreases the dynamics of a band. Turn it left to expand the "
    "signal, which works miracles on guitar sounds when combined with heavy distortion. Turn it "
    "to the right to squash the signal and introduce heavy pumping, which is great for spicing up "
    "your drum loops or vocals.\n\nIn the center position, the dynamics of the incoming signal "
    "are not changed. You can quickly set this position by Alt-clicking the knob.";
inline constexpr const char* style =
    "The Style button selects the distortion algorithm to use for this band. The varied "
    "distortion types included in Kestrelon Cinder range from gentle saturation to heavy guitar "
    "amp distortion or weird smudging, rectifier and destruction effects.";
inline constexpr const char* drive =
    "The Drive knob sets the level of distortion for this band. Effectively, it increases the "
    "input gain and corrects the output gain correspondingly.\n\nWith the Pan ring around the "
    "Drive knob, you can set different drive levels for either the left and right channels or for "
    "the mid and side channels (in Mid/Side channel processing mode).";
inline constexpr const char* tone =
    "With the Bass, Mid, Treble and Presence sliders, you can change the sound of this band after "
    "distortion, providing a quick way to adjust the generated harmonics.";
inline constexpr const char* mix =
    "The Mix knob enables you to mix some of the unprocessed (dry) signal of a band into the "
    "output signal. Turned all the way to the left, the band is effectively bypassed.";
inline constexpr const char* level =
    "The combined Output Level/Pan knobs control the output gain of this band. In Mid/Side "
    "channel processing mode, the pan ring works from mid to side instead of left to right.";
inline constexpr const char* enabled =
    "The Band Enabled button lets you quickly disable a band and bypasses it. When bypassed, the "
    "input signal flows unaltered through the band.";
inline constexpr const char* state =
    "The Solo and Mute buttons enable you to easily listen to specific bands only. Hold down a "
    "button to solo or mute temporarily while the mouse is down. Ctrl-click a button to solo or "
    "mute the band exclusively.";

}  // namespace band_hints

namespace band_rows {

using namespace band_hints;
using namespace row_words;

inline constexpr const char* styleNames =
    "Clean Tube,Warm Tube,Broken Tube,Clean Tape,Warm Tape,Old Tape,Smooth Amp,Crunchy Amp,"
    "Lead Amp,Screaming Amp,Power Amp,Gentle Saturation,Heavy Saturation,Smudge,Rectify,Destroy";

inline constexpr Scale feedback = percentOf(tapers::feedback);
inline constexpr Scale levelTaper = by(tapers::level);
inline constexpr Scale dryToWet = {&tapers::none, Scale::Span{-1, 1}, Scale::Span{0, 100}};

inline constexpr Role soloMute =
    choice("Normal,Solo,Mute,Solo (Mute)", ParameterKind::SoloMuteChoice);

// log2 of Hz
inline constexpr float hz10 = 3.321928f, hz40 = 5.321928f, hz250 = 7.965784f;
inline constexpr float hz1k = 9.965784f, hz18k = 14.13571f;

// clang-format off
inline constexpr ParameterRow bandRows[] = {
    // suffix                role       from     to default  hint            unit         scale
    {" Feedback Amount",     target(10),   0,     1,      0, feedbackAmount, LongPercent, feedback},
    {" Feedback Frequency",  target(11), hz10, hz1k,  hz250, feedbackFreq,   Log2Hertz},
    {" Dynamics",            target(1),   -1,     1,      0, dynamics},
    {" Style",               choice(styleNames), 0, 15,   0, style},
    {" Drive",               target(2),    0,     1,      0, drive,          Percent,  percentOf()},
    {" Drive Pan",           target(3),   -1,     1,      0, drive},
    {" Bass",                target(6),  -24,    24,      0, tone,           Decibels},
    {" Mid",                 target(7),  -24,    24,      0, tone,           Decibels},
    {" Treble",              target(8),  -24,    24,      0, tone,           Decibels},
    {" Presence",            target(9),  -24,    24,      0, tone,           Decibels},
    {" Mix",                 target(12),   0,   100,    100, mix,            Percent,  dryToWet},
    {" Level",               target(4),   -1,     1,      0, level,          Decibels, levelTaper},
    {" Pan",                 target(5),   -1,     1,      0, level},
    {" Enabled",             choice("Disabled,Enabled"), 0, 1, 1, enabled},
    {" Crossover Frequency", target(0), hz40, hz18k,   hz40, crossover,      Log2Hertz},
};

/// They stand in the tree behind everything else, and move along with their band.
inline constexpr ParameterRow bandExtensionRows[] = {
    {" State", soloMute, 0, 3, 0, state},
};
// clang-format on

static_assert(std::size(bandRows) == numBandParameters);

}  // namespace band_rows

}  // namespace cinder
