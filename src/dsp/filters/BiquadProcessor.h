#pragma once

#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

#include "core/Constants.h"
#include "core/Property.h"
#include "dsp/filters/BiquadKernels.h"
#include "dsp/filters/HeldCharge.h"
#include "dsp/filters/Schedule.h"
#include "wave/Producer.h"

namespace cinder {

/// Whether all of a section's past is less than -600 dBFS.
inline bool isAtRest(const BiquadState& state) noexcept CINDER_REALTIME {
    constexpr double nothing = 1e-30;
    return std::abs(state.x1) <= nothing && std::abs(state.x2) <= nothing &&
           std::abs(state.y1) <= nothing && std::abs(state.y2) <= nothing;
}

/// A cascade of second-order sections in direct form 1, in double precision, faded over the dry
/// signal by a wet factor of the design and a mix of its own:
///   out = dry + (wet - dry) * wetFactor * mix
/// Shape   one channel and up to `maxSections` sections; up to two channels run together as lanes.
///         Coefficients and wet factor hold for runs of samples, scheduled ahead of each block
/// State   of each section the last two inputs and outputs; the ramp of the mix; whether the
///         sections have to be restarted. Same result for any cut of the block, and for a channel
///         alone or in company; between processors with and without a fused product the last bit of
///         the doubles differs
class BiquadProcessor final : public wave::Component {
public:
    enum class ResetMode : std::int32_t {
        FromZero = 0,
        FromFirstInput = 1,  ///< after a soft restart; a filter that passes DC then starts settled
    };
    /// What goes on where coefficients change.
    enum class Carried : std::int32_t {
        Samples = 0,  ///< the last inputs and outputs, as they were
        Charge = 1,   ///< see HeldCharge; sections start from zero
    };
    enum class Restart { None, Soft, Hard };

    /// A processor at work on a block of its channel; the blocks do not overlap.
    struct Channel {
        BiquadProcessor* processor;
        const float* input;
        float* output;
    };

    /// Coefficients change at multiples of this many samples within a block.
    static constexpr int scheduleStep = 4;

    BiquadProcessor(wave::Environment* environment, int maxSections,
                    Carried carried = Carried::Samples);

    /// The schedule of the coming block; the number of sections first. [audio]
    void setNumSections(int count) noexcept CINDER_REALTIME { coefficients.setWidth(count); }
    int getNumSections() const { return coefficients.getWidth(); }
    void schedule(const BiquadCoefficients* sections, float wetFactor,
                  int numSamples) noexcept CINDER_REALTIME {
        coefficients.append(sections, numSamples);
        wetFactors.append(&wetFactor, numSamples);
    }
    /// In place of a schedule: what holds for the whole of the coming block, and stays where it is
    /// until then. [audio]
    void hold(const BiquadCoefficients* sections, float wetFactor) noexcept CINDER_REALTIME {
        held = sections;
        heldWetFactor = wetFactor;
    }
    bool isHeld() const { return held != nullptr; }
    /// What holds as a schedule like any other. [audio]
    void layOutHeld(int numSamples) noexcept CINDER_REALTIME;
    void clearSchedule() noexcept CINDER_REALTIME {
        coefficients.clear();
        wetFactors.clear();
        held = nullptr;
    }
    const Schedule<BiquadCoefficients>& getSchedule() const { return coefficients; }

    /// The state of a section, for whoever runs the sections of several filters as one.
    BiquadState& stateOf(int section) { return states[static_cast<std::size_t>(section)]; }

    /// Runs the blocks of one channel or two. By the first one's schedule if it `isShared`;
    /// otherwise each by its own, and with the same number of sections. Empties the schedules. On
    /// false the wet factor is 0 all along, nothing was written, and the output is the input.
    /// [audio]
    static bool process(std::span<const Channel> channels, bool isShared,
                        int numSamples) noexcept CINDER_REALTIME;
    /// The input has been handed on in place of a block. [audio]
    void skipBlock(int numSamples) noexcept CINDER_REALTIME;
    /// Whether silence in is silence out: nothing is left of the past that could be heard. [audio]
    bool restsAtZero(int numSections) const noexcept CINDER_REALTIME;
    /// In place of a block of silence, with a schedule or without. [audio]
    void rest(int numSections, int numSamples) noexcept CINDER_REALTIME;
    /// Time has gone by without a block. [audio]
    void missSamples(std::uint64_t numSamples) noexcept CINDER_REALTIME;

    /// Restarts the sections at the next block, unless a hard restart is pending. [audio]
    void restartSoftly() noexcept CINDER_REALTIME {
        if (restart == Restart::None) restart = Restart::Soft;
    }
    /// The same from zero state, and ends the ramp of the mix. [audio]
    void reset() noexcept CINDER_REALTIME;
    Restart getRestart() const { return restart; }

    /// Fades in 20 ms to all wet or all dry. Jumps after a discontinuity of the environment.
    /// [audio]
    void setEnabled(bool isEnabled) noexcept CINDER_REALTIME;
    static bool isNear(float a, float b) noexcept CINDER_REALTIME {
        return std::abs(a - b) <= sameValue;
    }
    bool isDry() const { return remaining == 0 && isNear(mix, 0.0f); }
    bool isWet() const { return remaining == 0 && isNear(mix, 1.0f); }

    Property<ResetMode> resetMode{ResetMode::FromZero};

private:
    void prime(int section, float input) noexcept CINDER_REALTIME;
    void advanceRamp(std::uint64_t numSamples) noexcept CINDER_REALTIME;
    static bool processHeld(std::span<const Channel> channels, bool isShared,
                            int numSamples) noexcept CINDER_REALTIME;
    void applyMix(const Schedule<float>& wet, const float* dry,
                  float* out) noexcept CINDER_REALTIME;
    void applyMix(float wet, int numSamples, const float* dry, float* out) noexcept CINDER_REALTIME;
    int collectRuns(std::span<const Channel> channels, bool isShared) noexcept CINDER_REALTIME;
    void runSections(std::span<const Channel> channels, int numRuns) noexcept CINDER_REALTIME;
    void runCharged(std::span<const Channel> channels, int numRuns) noexcept CINDER_REALTIME;
    static void carryCharges(std::span<const Channel> channels, const BiquadRun& run,
                             int numSections) noexcept CINDER_REALTIME;

    Schedule<BiquadCoefficients> coefficients;
    Schedule<float> wetFactors;
    const BiquadCoefficients* held = nullptr;  // in place of a schedule; not owned
    float heldWetFactor = 1.0f;
    std::vector<BiquadRun> runs;  // work space
    std::vector<BiquadState> states;
    /// The coefficients that the states are from.
    struct InForce {
        BiquadCoefficients coefficients;
        HeldCharge charge;
    };
    std::vector<InForce> inForce;  // empty where samples are carried
    Restart restart = Restart::Hard;

    // `remaining` samples ahead of its target the mix is mixTarget - mixStep * remaining.
    float mixTarget = 1.0f;
    float mixStep = 0.0f;
    float mix = 1.0f;
    int remaining = 0;
};

}  // namespace cinder
