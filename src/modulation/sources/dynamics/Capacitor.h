#pragma once

#include <cstdint>

#include "core/Property.h"
#include "distortion/curves/FunctionTable.h"
#include "wave/RestOfControls.h"

namespace cinder {

/// Smooths a gain change, with times of its own for rising and falling:
///   d = x[n] - y[n-1],  y[n] = y[n-1] + d (1 - exp(-ln 10 / (t rate)))
/// so that after t seconds a tenth of a step is left. t is `release` where d is at most -2^-23,
/// otherwise `attack`; the scales and curves make it depend on d, and the softening lets a fall
/// begin slowly.
///
/// Shape   one channel. While there is nothing to smooth, input and state within 1e-9 of 0, the
///         input's block is passed on as it is
/// Range   times 0..10 s, a t of 0 or less jumps; y never leaves the range of 0 and the inputs
/// State   the level in double, whether it falls, the softening; reset() takes effect with the next
///         block. The same bits for any cut of the block as long as nothing is passed on; the
///         passing on may move the level by 2e-9, and so a fall's end by 1.2e-7
/// Errors  none; a NaN or infinity lasts to the end of its block, then the level starts from 0
class Capacitor final : public wave::Filter {
public:
    class Style;

    Capacitor(wave::Environment* environment, const Style* style);

    ~Capacitor() override;

    void reset() noexcept CINDER_REALTIME override { resetPending = true; }  ///< [audio]

    /// Lets the capacitors of two channels that are heard together run as two lanes: the one pulled
    /// first in a cycle pulls the other's input as well. Null for none.
    void setPartner(Capacitor* newPartner);
    /// Those that share work and have the same input take a block over from the first of them that
    /// runs in a cycle, as long as they stand where that one stood. Both live equally long.
    void shareWork(Capacitor& other) { sharedWork = other.sharedWork = &other.work; }

    wave::FloatParameterBus attack;       // seconds
    wave::FloatParameterBus attackScale;  // 1 is neutral
    wave::FloatParameterBus attackCurve;  // 0 is neutral
    Property<bool> autoRelease{false};
    Property<float> autoReleaseTime{1.0f};     // seconds
    wave::FloatParameterBus releaseSoftening;  // 0 is neutral
    wave::FloatParameterBus release;           // seconds
    wave::FloatParameterBus releaseScale;      // 1 is neutral
    wave::FloatParameterBus releaseCurve;      // 0 is neutral

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    /// The control blocks of one cycle.
    struct Controls {
        const float* attack;
        const float* attackScale;
        const float* attackCurve;
        const float* releaseSoftening;
        const float* release;
        const float* releaseScale;
        const float* releaseCurve;
        bool arePlain;  // two times that stand still, all else neutral
    };

    /// The coefficient of the time last asked for; the exponential is worked out on a change only.
    struct Coefficient {
        double of(double timeSamples) noexcept CINDER_REALTIME;
        double lastSamples = 0.0;
        double value = 1.0;
    };

    /// What a block went by, and who has run it.
    struct Work {
        std::uint32_t blockId = 0;
        const float* in = nullptr;
        double from = 0.0, up = 0.0, down = 0.0;
        const Capacitor* by = nullptr;
    };

    void pullControls(int numSamples) noexcept CINDER_REALTIME;
    void followControls(int numSamples) noexcept CINDER_REALTIME;
    bool smoothsPlainly() const noexcept CINDER_REALTIME;
    bool joins(int numSamples) noexcept CINDER_REALTIME;
    void findCoefficients() noexcept CINDER_REALTIME;
    void smoothWithPartner(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME;
    void leave() noexcept CINDER_REALTIME;
    bool takesOver(const float* in) noexcept CINDER_REALTIME;
    bool isAtRest(const float* in, int numSamples) const noexcept CINDER_REALTIME;
    void beginAnew() noexcept CINDER_REALTIME;
    void smoothPlainly(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME;
    void smooth(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME;
    double fallingTime(double& d, int i) noexcept CINDER_REALTIME;
    double risingTime(double d, int i) const noexcept CINDER_REALTIME;
    double softened(double d, float softening) noexcept CINDER_REALTIME;
    double curveAt(double d, int i) noexcept CINDER_REALTIME;

    Controls controls = {};
    wave::RestOfControls rest;
    const Style* style;            // not owned
    Capacitor* partner = nullptr;  // likewise
    Work work;
    Work* sharedWork = nullptr;  // one for all that share
    double state = 0.0;
    bool falling = false;
    double softeningPosition = 0.0;  // 0..1, from the start of a fall on
    bool resetPending = true;

    Coefficient riseCoefficient;
    Coefficient fallCoefficient;
    float softeningSamples = 1.0f;
    double softeningStep = 1.0;  // 1 / softeningSamples
    double curveDistance = 0.0;  // the d of curveValue
    double curveValue = 1.0;     // exp(curveDistance)
};

/// exp(x) between -25 and 0, interpolated in a table: what all capacitors of the process share.
/// Range   x below -25 and NaN count as -25, a little above 0 it is 1; the error is at most 2.1e-6
///         of the result
/// State   none after construction
class Capacitor::Style {
public:
    class ExpFunction final : public FunctionTableFunction {
    public:
        double evaluate(double x) const override;
    };

    Style();
    double exp(double x) const noexcept CINDER_REALTIME;  ///< [any]

private:
    DoubleFunctionTable table;
};

}  // namespace cinder
