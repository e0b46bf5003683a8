#include "modulation/sources/dynamics/Capacitor.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "core/Constants.h"
#include "modulation/sources/dynamics/DynamicsKernels.h"

namespace cinder {

namespace {

constexpr float restLevel = 1e-9f;
// ln 10, in the digits that saved sounds were made with: after the set time a tenth is left.
constexpr double decadeNepers = 2.3025851;
constexpr double expMinimum = -25.0;
constexpr double scalePerDb = 0.1;
constexpr double softeningPerDb = 0.041666666666666664;  // seconds per dB and unit of softening
constexpr double curveReach = 10.0;                      // dB

bool isNear(float value, float neutral) noexcept CINDER_REALTIME {
    return std::abs(value - neutral) <= sameValue;
}

}  // namespace

Capacitor::Capacitor(wave::Environment* environment, const Style* style)
    : Filter(environment),
      attack(environment, 0.0005f, 0.0f, 10.0f),
      attackScale(environment, 1.0f),
      attackCurve(environment, 0.0f, -1.0f, 1.0f),
      releaseSoftening(environment, 0.0f, 0.0f, 10.0f),
      release(environment, 0.1f, 0.0f, 10.0f),
      releaseScale(environment, 1.0f),
      releaseCurve(environment, 0.0f, -1.0f, 1.0f),
      style(style) {
    for (wave::FloatParameterBus* control : {&attack, &attackScale, &attackCurve, &releaseSoftening,
                                             &release, &releaseScale, &releaseCurve})
        rest.add(*control);
    makeResettable();
}

Capacitor::~Capacitor() {
    setPartner(nullptr);
}

void Capacitor::setPartner(Capacitor* newPartner) {
    if (newPartner == partner) return;
    for (Capacitor* side : {this, newPartner}) {
        if (!side || !side->partner) continue;
        side->partner->partner = nullptr;
        side->partner = nullptr;
    }
    if (newPartner) newPartner->partner = this;
    partner = newPartner;
}

void Capacitor::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                        unsigned) noexcept CINDER_REALTIME {
    if (isAtRest(in->data(), numSamples)) {
        passOn(in);
        setConstant(input->isConstant());
        return;
    }
    followControls(numSamples);
    setConstant(false);
    if (!controls.arePlain || autoRelease)
        smooth(in->data(), out->data(), numSamples);
    else if (sharedWork && takesOver(in->data()))
        return;
    else if (smoothsPlainly() && partner && partner->joins(numSamples))
        smoothWithPartner(in->data(), out->data(), numSamples);
    else
        smoothPlainly(in->data(), out->data(), numSamples);
    leave();
}

void Capacitor::followControls(int numSamples) noexcept CINDER_REALTIME {
    if (resetPending) beginAnew();
    if (rest.goesOn(environment->getPosition(), numSamples)) return;
    pullControls(numSamples);
    rest.tryToBegin(numSamples);
}

/// Whether this block has been run already; if not, this capacitor is about to.
bool Capacitor::takesOver(const float* in) noexcept CINDER_REALTIME {
    findCoefficients();
    Work& done = *sharedWork;
    const Work own = {environment->getBlockId(), in,  state, riseCoefficient.value,
                      fallCoefficient.value,     this};
    if (done.blockId != own.blockId) {
        done = own;
        return false;
    }
    if (done.in != in || done.from != state || done.up != own.up || done.down != own.down)
        return false;
    state = done.by->state;
    falling = false;
    passOn(done.by->getOutput());
    setConstant(done.by->isConstant());
    return true;
}

/// Sample by sample, and with two coefficients.
bool Capacitor::smoothsPlainly() const noexcept CINDER_REALTIME {
    return controls.arePlain && !autoRelease && !input->isConstant();
}

/// As the other one of a pair. Where it does not, it is left for its own pull.
bool Capacitor::joins(int numSamples) noexcept CINDER_REALTIME {
    if (!input || getLastBlockId() == environment->getBlockId()) return false;
    const float* const in = input->pull(numSamples)->data();
    if (input->isConstant() || isAtRest(in, numSamples)) return false;
    followControls(numSamples);
    return smoothsPlainly();
}

void Capacitor::smoothWithPartner(const float* in, float* out,
                                  int numSamples) noexcept CINDER_REALTIME {
    CapacitorPair pair = {};
    Capacitor* const sides[] = {this, partner};
    for (int i = 0; i < 2; ++i) {
        Capacitor& side = *sides[i];
        side.findCoefficients();
        pair.level[i] = side.state;
        pair.up[i] = side.riseCoefficient.value;
        pair.down[i] = side.fallCoefficient.value;
    }
    const float* const ins[] = {in, partner->input->getOutput()->data()};
    float* const outs[] = {out, partner->ownBlock->data()};
    dynamicsKernels->smoothPair(pair, ins, outs, numSamples);
    for (int i = 0; i < 2; ++i) {
        sides[i]->state = pair.level[i];
        sides[i]->falling = false;
    }
    partner->passOn(partner->ownBlock.get());
    partner->setConstant(false);
    partner->leave();
}

void Capacitor::leave() noexcept CINDER_REALTIME {
    if (!std::isfinite(state)) state = 0.0;
}

void Capacitor::findCoefficients() noexcept CINDER_REALTIME {
    const auto sampleRate = static_cast<double>(environment->getSampleRate());
    riseCoefficient.of(static_cast<double>(controls.attack[0]) * sampleRate);
    fallCoefficient.of(static_cast<double>(controls.release[0]) * sampleRate);
}

/// Compares bit patterns, which magnitudes of floats allow: a loop that compilers turn into
/// vectors, and one in which a NaN is no rest.
bool Capacitor::isAtRest(const float* in, int numSamples) const noexcept CINDER_REALTIME {
    if (!(std::abs(state) <= static_cast<double>(restLevel))) return false;
    const int count = input->isConstant() ? 1 : numSamples;
    constexpr auto rest = std::bit_cast<std::int32_t>(restLevel);
    std::int32_t isLoud = 0;
    for (int i = 0; i < count; ++i)
        isLoud |= (std::bit_cast<std::int32_t>(in[i]) & 0x7fffffff) > rest ? 1 : 0;
    return isLoud == 0;
}

void Capacitor::beginAnew() noexcept CINDER_REALTIME {
    resetPending = false;
    softeningPosition = 0.0;
    falling = false;
    state = 0.0;
    // The curve is worked out anew only now and then; what sound came before must not show.
    curveDistance = 0.0;
    curveValue = 1.0;
}

void Capacitor::pullControls(int numSamples) noexcept CINDER_REALTIME {
    controls.arePlain = true;
    const auto time = [&](wave::FloatParameterBus& bus) {
        const float* const samples = bus.pull(numSamples)->data();
        controls.arePlain = controls.arePlain && bus.isConstant();
        return samples;
    };
    const auto shape = [&](wave::FloatParameterBus& bus, float neutral) {
        const float* const samples = time(bus);
        controls.arePlain = controls.arePlain && isNear(samples[0], neutral);
        return samples;
    };
    controls.attack = time(attack);
    controls.attackScale = shape(attackScale, 1.0f);
    controls.attackCurve = shape(attackCurve, 0.0f);
    controls.releaseSoftening = shape(releaseSoftening, 0.0f);
    controls.release = time(release);
    controls.releaseScale = shape(releaseScale, 1.0f);
    controls.releaseCurve = shape(releaseCurve, 0.0f);
}

void Capacitor::smoothPlainly(const float* in, float* out,
                              int numSamples) noexcept CINDER_REALTIME {
    findCoefficients();
    const double up = riseCoefficient.value;
    const double down = fallCoefficient.value;
    // One step waits for the one before, so lanes gain nothing, and choosing without a branch would
    // only lengthen the chain: sounds change direction rarely enough to be foreseen.
    double level = state;
    const auto next = [=](double from, float to) {
        const double d = static_cast<double>(to) - from;
        return from + d * (d <= capacitorFallsFrom ? down : up);
    };
    falling = false;
    if (input->isConstant() && next(level, in[0]) == level) {
        std::fill_n(out, numSamples, static_cast<float>(level));
        return setConstant(true);
    }
    for (int i = 0; i < numSamples; ++i) {
        level = next(level, in[i]);
        out[i] = static_cast<float>(level);
    }
    state = level;
}

void Capacitor::smooth(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME {
    const auto sampleRate = static_cast<double>(environment->getSampleRate());
    for (int i = 0; i < numSamples; ++i) {
        double d = static_cast<double>(in[i]) - state;
        if (d <= capacitorFallsFrom) {
            if (!falling) softeningPosition = 0.0;
            falling = true;
            const double seconds = fallingTime(d, i);
            state += d * fallCoefficient.of(seconds * sampleRate);
        } else {
            falling = false;
            state += d * riseCoefficient.of(risingTime(d, i) * sampleRate);
        }
        out[i] = static_cast<float>(state);
    }
}

/// Seconds of a fall by d, which the softening shortens.
double Capacitor::fallingTime(double& d, int i) noexcept CINDER_REALTIME {
    auto t = static_cast<double>(controls.release[i]);
    if (autoRelease)
        t = static_cast<double>(autoReleaseTime.get()) / (std::sqrt(std::max(state, 0.0)) + 1.0);
    if (const float scale = controls.releaseScale[i]; !isNear(scale, 1.0f)) {
        const double x = t * d * -scalePerDb;
        t = (t - x) * static_cast<double>(scale) + x;
    }
    if (const float softening = controls.releaseSoftening[i]; !isNear(softening, 0.0f))
        d = softened(d, softening);
    if (const float curve = controls.releaseCurve[i]; !isNear(curve, 0.0f) && d > -curveReach)
        t += curveAt(d, i) * static_cast<double>(curve);
    return t;
}

/// Seconds of a rise by d.
double Capacitor::risingTime(double d, int i) const noexcept CINDER_REALTIME {
    auto t = static_cast<double>(controls.attack[i]);
    if (const float scale = controls.attackScale[i]; !isNear(scale, 1.0f)) {
        const double x = t * d * scalePerDb;
        t = (t - x) * static_cast<double>(scale) + x;
    }
    if (const float curve = controls.attackCurve[i]; !isNear(curve, 0.0f) && d < curveReach)
        t += style->exp(-d) * static_cast<double>(curve);
    return t;
}

/// Fades the fall in, over a time that grows with its depth.
double Capacitor::softened(double d, float softening) noexcept CINDER_REALTIME {
    const auto sampleRate = static_cast<double>(environment->getSampleRate());
    const auto samples = static_cast<float>(
        std::max(1.0, std::abs(d) * softeningPerDb * sampleRate * static_cast<double>(softening)));
    if (samples != softeningSamples) {
        softeningSamples = samples;
        softeningStep = 1.0 / static_cast<double>(samples);
    }
    softeningPosition = std::min(1.0, softeningPosition + softeningStep);
    return d * softeningPosition * softeningPosition;
}

/// exp(d), worked out where d has moved away and on every 16th sample of the time line, so that a
/// cut of the block makes no difference.
double Capacitor::curveAt(double d, int i) noexcept CINDER_REALTIME {
    const bool isDue = ((environment->getPosition() + static_cast<std::uint64_t>(i)) & 15u) == 0;
    const double tolerance = d * d * d * d * 9.999999747378752e-06 + 3.9999998989515007e-05;
    if (isDue || std::abs(d - curveDistance) > tolerance) {
        curveDistance = d;
        curveValue = style->exp(d);
    }
    return curveValue;
}

/// Written so that a NaN jumps like no time at all.
double Capacitor::Coefficient::of(double timeSamples) noexcept CINDER_REALTIME {
    if (timeSamples != lastSamples) {
        lastSamples = timeSamples;
        value = timeSamples > static_cast<double>(sameValue)
                    ? 1.0 - std::exp(-decadeNepers / timeSamples)
                    : 1.0;
    }
    return value;
}

double Capacitor::Style::ExpFunction::evaluate(double x) const {
    return std::exp(x);
}

Capacitor::Style::Style() {
    constexpr int numPoints = 8192;
    table.build(numPoints, ExpFunction(), expMinimum, 0.0);
}

double Capacitor::Style::exp(double x) const noexcept CINDER_REALTIME {
    return table.lookup(static_cast<float>(x > expMinimum ? x : expMinimum));
}

}  // namespace cinder
