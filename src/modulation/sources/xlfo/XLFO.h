#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "core/Property.h"
#include "modulation/sources/xlfo/PhaseClock.h"
#include "modulation/vocabulary/SourceParameters.h"
#include "wave/FloatParameterBus.h"

namespace cinder {

/// A low-frequency oscillator whose wave form is a row of steps.
///
/// The first half of the N steps shares the cycle from 0 to the balance b, the other half the rest;
/// a middle step straddles b, with half of itself on either side, each at its own speed. A step
/// holds its value v and glides to the next one's over its last share g (GlideKernels.h).
/// Meanwhile
///     base  += frequency / rate
///     phase += frequency / rate + the change of the phase offset
/// and behind each step both are wrapped to [0, 1), where phase = offset + base.
///
/// Shape   1..maxBlockSize samples; a sink, so it runs whether or not anybody listens; never marked
///         as constant
/// Range   out within the steps' values, -1..1; frequency 0..5000 Hz, phase offset -100..100 turns,
///         clamped; a NaN is a frequency or an offset of 0, or no glide; N 1..16
/// State   the two phases, the values random steps have drawn; survives a reset of the environment;
///         the same bits for any cut of the block
/// Errors  none
class XLFO final : public wave::Source, public PropertyOwner {
public:
    using GlideCurve = cinder::GlideCurve;
    /// What random values lie in: -1 to 1, or 0 to 1.
    enum class RandomRange : std::int32_t { Bipolar, Unipolar };
    static constexpr int maxSteps = 16;
    /// Status bit: so fast that the interface had better show a peak than a momentary value.
    static constexpr std::uint32_t fast = 2;

    class Step final : public PropertyOwner {
    public:
        Step() = default;
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

        void propertyChanged(AbstractProperty* property) override;

        LimitedProperty<float> glide{0.0f, 0.0f, 1.0f, this};  // share of the step
        Property<GlideCurve> glideCurve{GlideCurve::Linear, this};
        Property<bool> random{false, this};
        Property<bool> snap{false, this};
        LimitedProperty<float> value{0.0f, -1.0f, 1.0f, this};

    private:
        friend class XLFO;

        float resolvedValue = 0.0f;  // what the step is worth in this pass
        bool isResolved = false;
        bool isMiddle = false;
        double start = 0.0, end = 0.0;  // its part of the cycle
        double pace = 0.0;              // 1 / (end - start)
        float nextRandom = 0.0f;        // of a lone step
    };

    explicit XLFO(wave::Environment* environment);

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;
    void propertyChanged(AbstractProperty* property) override;

    /// Starts the random values over: the same seed, the same values. Without it, every XLFO that a
    /// program makes has another start, which depends on how many came before. [audio]
    void seedRandom(std::uint32_t seed) noexcept CINDER_REALTIME;

    /// A note has begun. With the trigger on, the cycle restarts at the phase offset, and the song
    /// position of this sample becomes the start of the cycle. [audio]
    void trigger(bool midiTriggerOn) noexcept CINDER_REALTIME;
    /// Where the song is at the present sample, in quarter notes, and how fast it goes. [audio]
    void followSong(float tempo, float position) noexcept CINDER_REALTIME;
    /// Where it has come to since, at the present sample. [audio]
    float getSongPosition() const noexcept CINDER_REALTIME;
    /// Puts the base where the song is in a cycle of this many bars, unless the song stands still.
    /// A position less far back than a float can tell moves nothing: behind a step's end that would
    /// play the step's last sample again, or draw its next random value. [audio]
    void synchronise(float position, float cycleBars) noexcept CINDER_REALTIME;

    /// What the interface shows, 0 to 1: the last block's first sample, or the highest step while
    /// the XLFO is fast. [any]
    float getSourceValue() const noexcept CINDER_REALTIME {
        return shown.load(std::memory_order_relaxed);
    }
    double getPhase() const noexcept CINDER_REALTIME { return wrapped(clock.phase()); }
    double getBasePhase() const noexcept CINDER_REALTIME { return wrapped(clock.base()); }

    Property<int> numSteps{maxSteps, this};
    LimitedProperty<float> balance{0.5f, 0.0001f, 0.9999f, this};
    wave::FloatParameterBus frequency;    // Hz
    wave::FloatParameterBus glide;        // added to that of each step
    wave::FloatParameterBus phaseOffset;  // turns
    Property<RandomRange> randomRange{RandomRange::Bipolar};
    std::array<Step, maxSteps> steps;

private:
    struct Controls {
        const float *frequency, *glide, *phaseOffset;
        double sampleRate;
        bool phaseIsEven, glideStands;
        double inverseIncrement;  // where the phase is even
    };
    /// A stretch of the cycle that is played at one pace: a step, or a half of the middle one.
    struct Stretch {
        const Step* step;
        float from, to;
        double start, end;
        double origin, pace;  // t = (phase - origin) * pace
        double length;        // 1 / pace
    };

    static std::uint32_t nextSeed() noexcept;
    void show(float first) noexcept CINDER_REALTIME;
    void layOutSteps() noexcept CINDER_REALTIME;
    void keepPlaceIn(double oldShare) noexcept CINDER_REALTIME;
    float valueOf(int index) noexcept CINDER_REALTIME;
    float valueBehind(int index) noexcept CINDER_REALTIME;
    float randomAfter(float previous) noexcept CINDER_REALTIME;

    int findStep(double phase) const noexcept CINDER_REALTIME;
    Stretch stretchAt(int index, double phase) noexcept CINDER_REALTIME;
    void leaveStretch(Step& step) noexcept CINDER_REALTIME;
    int renderEven(const Stretch& stretch, const Controls& controls, float* out, int first,
                   int numSamples) noexcept CINDER_REALTIME;
    int samplesBefore(float glideBegin, const Stretch& stretch, double inverseIncrement,
                      int numSamples) const noexcept CINDER_REALTIME;
    int renderTracked(const Stretch& stretch, const Controls& controls, float* out, int first,
                      int numSamples) noexcept CINDER_REALTIME;
    void prepareTrack(const Controls& controls, int first, int numSamples) noexcept CINDER_REALTIME;
    int trackPhase(const Stretch& stretch, const Controls& controls, int first,
                   int numSamples) noexcept CINDER_REALTIME;
    void glideAlongTimes(const Stretch& stretch, const Controls& controls, float* out, int first,
                         int count) noexcept CINDER_REALTIME;
    void hold(float value, float* out, int first, int numSamples) noexcept CINDER_REALTIME;

    PhaseClock clock;
    float lastPhaseOffset = 0.0f;
    int current = 0;                // the step that was played last
    wave::BasicBlock<float> times;  // t of each sample of a stretch whose controls move
    wave::BasicBlock<double> increments, jumps;  // what each sample adds to the phase

    int stepsInUse = maxSteps;
    double firstShare = 0.5;  // of the cycle, for the first half of the steps
    std::uint32_t randomState;

    float lastPosition = -1.0f;  // at the last synchronisation; quarter notes, like the next ones
    float positionReference = 0.0f;
    float songPosition = -1.0f;
    std::uint64_t songPositionAt = 0;  // its sample
    double quartersPerSample = 0.0;

    int held = 0;  // leading samples of the block that hold `heldValue` already
    float heldValue = 0.0f;

    std::atomic<float> shown{0.5f};
};

}  // namespace cinder
