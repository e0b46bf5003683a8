#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>

#include "core/Property.h"
#include "modulation/sources/envelopes/EnvelopeCurves.h"
#include "modulation/sources/envelopes/Trigger.h"
#include "modulation/vocabulary/SourceParameters.h"
#include "wave/FloatParameterBus.h"
#include "wave/MuteController.h"

namespace cinder {

/// An envelope of delay, attack, decay, sustain and release, each section one table over its time:
///   attack   up(p) (1 - start) + start, from wherever the envelope stands
///   decay    down(p) (1 - sustain) + sustain; up(p) where the sustain level has risen
///   release  down(p) start, once the gate has been closed for the hold time
/// so it is 0 at rest and 1 at its peak.
///
///             start            delay over       attack over        table's end
///   idle ───────────────► delay ──────► attack ──────► decay, sustain   ┌────► idle
///                           └─────────────┴── closed for the hold time ─┴─ release
///   A start in any section goes back to delay and keeps the value.
///
/// Shape   a sink, so it runs whether anybody listens or not; a block in which nothing moves is
///         constant, and a generator at rest reads no control
/// Range   times 0..100 s, those of the curves from 0.00145 s, sustain 0..1, all clamped
/// State   the section and the place in it; reset() goes to rest. The controls are read at a start,
///         at a closing, and every 64 samples from there. Starts and closings by a trigger fall on
///         multiples of 4 within the block, and whether a decay rises or falls is decided chunk by
///         chunk, for levels 1.2e-7 apart: all else is the same for any cut of the block
/// Errors  none; whatever the controls bring, the envelope stays finite
class EnvelopeGenerator final : public wave::Source,
                                public PropertyOwner,
                                public wave::MuteController {
public:
    enum class Range : std::int32_t {
        RestAtZero = 0,     ///< rests at 0, peaks at 1
        SustainAtZero = 1,  ///< rests at -sustain, peaks at 1 - sustain
    };
    using Triggering = cinder::Triggering;

    class DefaultUpCurve final : public FunctionTableFunction {
    public:
        double evaluate(double x) const override { return x; }
    };
    class DefaultDownCurve final : public FunctionTableFunction {
    public:
        double evaluate(double x) const override { return 1.0 - x; }
    };

    /// Without curves it builds straight ones of its own.
    explicit EnvelopeGenerator(wave::Environment* environment,
                               const EnvelopeCurves* sharedCurves = nullptr);

    /// What starts it besides `requestStart`; not owned.
    void setTrigger(Trigger* newTrigger) { trigger = newTrigger; }
    /// Hands its trigger over to notes or back to levels, and closes. Which level is the choice of
    /// whoever feeds the trigger. [audio]
    void setTriggering(Triggering triggering) noexcept CINDER_REALTIME;
    /// The next block begins with a start. [audio]
    void requestStart() noexcept CINDER_REALTIME { startRequested = true; }
    /// Lets go: the hold time begins, then the release. [audio]
    void close() noexcept CINDER_REALTIME;

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;
    void reset() noexcept CINDER_REALTIME override;  ///< [audio]
    void propertyChanged(AbstractProperty* property) override;

    bool isIdle() const noexcept CINDER_REALTIME { return phase == Phase::Idle && !startRequested; }
    bool isMuted() const noexcept CINDER_REALTIME override { return isIdle(); }
    /// What the source bar shows: 0 at rest, 1 at the peak, whatever the range. [any]
    float getSourceValue() const noexcept CINDER_REALTIME {
        return shown.load(std::memory_order_relaxed);
    }

    wave::FloatParameterBus delay;    // seconds
    wave::FloatParameterBus attack;   // seconds
    wave::FloatParameterBus decay;    // seconds
    wave::FloatParameterBus release;  // seconds
    wave::FloatParameterBus hold;     // seconds
    wave::FloatParameterBus sustain;  // level
    Property<Range> range{Range::RestAtZero, this};

private:
    enum class Phase : std::int32_t { Idle, Running, Finished };  // finished: idle from next block
    struct Controls;
    class Writer;
    struct Section {
        const FunctionTable& table;
        double& index;  // the place in the table
        float seconds;
    };

    Controls pullControls(int numSamples) noexcept CINDER_REALTIME;
    void readControls(Controls& controls, int i) noexcept CINDER_REALTIME;
    void readDelay(float seconds) noexcept CINDER_REALTIME;
    void readDecayAndSustain(float seconds, float level) noexcept CINDER_REALTIME;
    void start(Controls& controls, int i) noexcept CINDER_REALTIME;
    void renderSegment(Writer& out, Controls* controls, int from, int to) noexcept CINDER_REALTIME;
    void renderChunk(Writer& out, int numSamples) noexcept CINDER_REALTIME;
    void renderAttack(Writer& out, int numSamples) noexcept CINDER_REALTIME;
    void renderDecay(Writer& out, int numSamples) noexcept CINDER_REALTIME;
    void renderRelease(Writer& out, int numSamples) noexcept CINDER_REALTIME;
    void renderCurve(Writer& out, const Section& section, float scale, float offset,
                     int numSamples) noexcept CINDER_REALTIME;
    int samplesOf(float seconds) const noexcept CINDER_REALTIME;
    float rest() const noexcept CINDER_REALTIME { return restOffset - sustainLevel; }
    void show() noexcept CINDER_REALTIME { shown.store(value - rest(), std::memory_order_relaxed); }

    std::unique_ptr<const EnvelopeCurves> ownCurves;  // where there are no shared ones
    const EnvelopeCurves& curves;
    Trigger* trigger = nullptr;

    float holdTime, delayTime, attackTime, decayTime, releaseTime;  // as last read, seconds
    float sustainLevel;
    float restOffset;  // the level of sustain in the output

    Phase phase = Phase::Idle;
    bool gate = false;
    bool startRequested = false;
    bool isReleasing = false;  // a release that has begun is left by its end or by a start alone
    int parameterCountdown = 0;
    int holdCounter = 0;  // samples since the gate closed
    int holdSamples = 0;
    int delayLength = 0;   // samples of the running delay in all
    int delayCounter = 0;  // samples left
    int attackCounter = 0;
    double attackIndex = 0.0;
    double decayIndex = 0.0;
    double releaseIndex = 0.0;
    float attackStart = 0.0f;
    float decayRange = 0.0f;
    float lastValue = 0.0f;  // where the release began
    float value = 0.0f;

    int filled = 0;  // leading samples of the own block that hold `filledValue`
    float filledValue = 0.0f;

    std::atomic<float> shown{0.0f};
};

}  // namespace cinder
