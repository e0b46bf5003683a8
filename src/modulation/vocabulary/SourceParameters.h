#pragma once

#include <cstdint>

#include "modulation/vocabulary/NamePattern.h"

// What the choices among the parameters of the modulation sources stand for. An enumerator's number
// is the stored value, and the names follow in that order.

namespace cinder {

/// Bars a cycle of an XLFO takes. Free: it has a frequency of its own.
enum class SyncMode : std::int32_t {
    Free,
    Bars16,
    Bars8,
    Bars4,
    Bars2,
    Bar,
    Bar2nd,
    Bar4th,
    Bar8th,
    Bar16th,
    Bar32nd,
    Bar64th,
};
inline constexpr char syncModeNames[] = "Free,16,8,4,2,1,1/2,1/4,1/8,1/16,1/32,1/64";
static_assert(numNames(syncModeNames) == static_cast<int>(SyncMode::Bar64th) + 1);

/// How an XLFO's step goes over to the next one.
enum class GlideCurve : std::int32_t { Linear, Sqr, Sqrt, Sine };
inline constexpr char glideCurveNames[] = "Linear,Sqr,Sqrt,Sine";
static_assert(numNames(glideCurveNames) == static_cast<int>(GlideCurve::Sine) + 1);

/// What starts an envelope.
enum class Triggering : std::int32_t { NormalInput, SideChain, Midi };
inline constexpr char triggeringNames[] = "Normal Input,Side Chain,MIDI";
static_assert(numNames(triggeringNames) == static_cast<int>(Triggering::Midi) + 1);

/// What a MIDI source listens to.
enum class MidiInput : std::int32_t {
    ModWheel,
    PitchBend,
    Velocity,
    Aftertouch,
    KeyboardTrack,
    Controller,
};
inline constexpr char midiInputNames[] =
    "Mod Wheel,Pitch Bend,Velocity,Aftertouch,KB Track,Controller";
static_assert(numNames(midiInputNames) == static_cast<int>(MidiInput::Controller) + 1);

/// How a MIDI source bends what it hears.
enum class ResponseCurve : std::int32_t { Linear, Exp, Log, Sqr, Sqrt, Sine };
inline constexpr char responseCurveNames[] = "Linear,Exp,Log,Sqr,Sqrt,Sine";
static_assert(numNames(responseCurveNames) == static_cast<int>(ResponseCurve::Sine) + 1);

}  // namespace cinder
