#include "modulation/sources/envelopes/EnvelopeGenerator.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"

namespace cinder {

namespace {

constexpr float longestTime = 100.0f;
constexpr float shortestCurve = 0.001451247f;  // 64 samples at 44100 Hz
constexpr int readEvery = 64;                  // samples
constexpr int mostSamples = 1 << 30;           // of a section: beyond it an int would end

bool isChanged(float before, float after) noexcept CINDER_REALTIME {
    return std::abs(after - before) > sameValue;
}

/// Written so that a NaN ends at the least.
float limited(float x, float least, float most) noexcept CINDER_REALTIME {
    if (!(x > least)) return least;
    return x < most ? x : most;
}

float limitedCurve(float seconds) noexcept CINDER_REALTIME {
    return limited(seconds, shortestCurve, longestTime);
}

constexpr int roundedDown(int samples) {
    return samples & ~3;
}

constexpr int roundedUp(int samples) {
    return roundedDown(samples + 3);
}

float notBelowZero(float x) noexcept CINDER_REALTIME {
    return x > 0.0f ? x : 0.0f;
}

}  // namespace

/// The control blocks of one cycle.
struct EnvelopeGenerator::Controls {
    const float* delay;
    const float* attack;
    const float* decay;
    const float* release;
    const float* hold;
    const float* sustain;
    bool standStill;       // all of them
    bool areRead = false;  // so where they stand still, there is nothing new in them
};

/// Writes a block from its front, and puts off a constant for as long as all of it is one.
class EnvelopeGenerator::Writer {
public:
    explicit Writer(float* block) : block(block) {}

    void fill(float x, int numSamples) noexcept CINDER_REALTIME {
        if (numSamples <= 0) return;
        if (length == 0) constant = x;
        const bool goesOn = isConstant && x == constant;
        if (!goesOn) std::fill_n(take(numSamples), numSamples, x);
        if (goesOn) length += numSamples;
    }
    /// The next samples, for the caller to write.
    float* take(int numSamples) noexcept CINDER_REALTIME {
        if (isConstant) std::fill_n(block, length, constant);
        isConstant = false;
        float* const samples = block + length;
        length += numSamples;
        return samples;
    }

    float* const block;
    int length = 0;
    bool isConstant = true;
    float constant = 0.0f;
};

EnvelopeGenerator::EnvelopeGenerator(wave::Environment* environment,
                                     const EnvelopeCurves* sharedCurves)
    : Source(environment),
      delay(environment, 0.0f, 0.0f, longestTime),
      attack(environment, shortestCurve, shortestCurve, longestTime),
      decay(environment, shortestCurve, shortestCurve, longestTime),
      release(environment, shortestCurve, shortestCurve, longestTime),
      hold(environment, 0.0f, 0.0f, longestTime),
      sustain(environment, 1.0f, 0.0f, 1.0f),
      ownCurves(sharedCurves
                    ? nullptr
                    : std::make_unique<const EnvelopeCurves>(DefaultUpCurve(), DefaultDownCurve())),
      curves(sharedCurves ? *sharedCurves : *ownCurves),
      holdTime(hold.getParameter().getTarget()),
      delayTime(delay.getParameter().getTarget()),
      attackTime(attack.getParameter().getTarget()),
      decayTime(decay.getParameter().getTarget()),
      releaseTime(release.getParameter().getTarget()),
      sustainLevel(sustain.getParameter().getTarget()),
      restOffset(sustainLevel) {
    makeResettable();
    setRenderPriority(1);
}

/// The trigger starts anew as well: a sound that goes on behind the cut shall have its envelope.
void EnvelopeGenerator::reset() noexcept CINDER_REALTIME {
    isReleasing = false;
    value = rest();
    phase = Phase::Idle;
    holdCounter = 0;
    gate = false;
    startRequested = false;
    if (trigger) trigger->reset();
    show();
}

void EnvelopeGenerator::setTriggering(Triggering triggering) noexcept CINDER_REALTIME {
    if (trigger) {
        trigger->enabled = triggering != Triggering::Midi;
        trigger->reset();  // what it knows is of another level
    }
    close();
}

void EnvelopeGenerator::close() noexcept CINDER_REALTIME {
    startRequested = false;
    gate = false;
    parameterCountdown = 0;
}

void EnvelopeGenerator::propertyChanged(AbstractProperty*) {
    restOffset = range == Range::RestAtZero ? sustainLevel : 0.0f;
    if (phase != Phase::Running) value = rest();
}

void EnvelopeGenerator::render(wave::BasicBlock<float>* block, int numSamples,
                               unsigned flags) noexcept CINDER_REALTIME {
    if (phase == Phase::Finished) phase = Phase::Idle;
    Controls pulled{};
    Controls* controls = nullptr;
    const auto pullOnce = [&] {
        if (!controls) pulled = pullControls(numSamples);
        controls = &pulled;
    };
    // A start reads them, so rest needs none, unless it follows the sustain level.
    const bool isHeard = !(flags & wave::Environment::sinkVisit);
    if (!isIdle() || (isHeard && range != Range::RestAtZero)) pullOnce();
    if (startRequested) start(*controls, 0);

    Writer out(block->data());
    if (trigger && trigger->enabled) {
        for (const Trigger::Event& event : trigger->analyse(numSamples)) {
            renderSegment(out, controls, out.length, roundedDown(event.sample));
            if (event.kind == Trigger::Event::Kind::Close) {
                close();
                continue;
            }
            pullOnce();
            start(*controls, out.length);
        }
    }
    renderSegment(out, controls, out.length, numSamples);

    // Also where nobody pulls: another sink that does so in this cycle hears this block.
    if (!out.isConstant) {
        filled = 0;
    } else if (filled < numSamples || filledValue != out.constant) {
        std::fill_n(out.block, numSamples, out.constant);
        filled = numSamples;
        filledValue = out.constant;
    }
    setConstant(out.isConstant);
    show();
}

EnvelopeGenerator::Controls EnvelopeGenerator::pullControls(int numSamples) noexcept
    CINDER_REALTIME {
    Controls controls{};
    controls.standStill = true;
    const auto take = [&](wave::FloatParameterBus& bus) {
        const float* const samples = bus.pull(numSamples)->data();
        controls.standStill = controls.standStill && bus.isConstant();
        return samples;
    };
    controls.delay = take(delay);
    controls.attack = take(attack);
    controls.decay = take(decay);
    controls.release = take(release);
    controls.hold = take(hold);
    controls.sustain = take(sustain);
    return controls;
}

/// A section that runs follows a change of its time at once, from where it stands.
void EnvelopeGenerator::readControls(Controls& controls, int i) noexcept CINDER_REALTIME {
    controls.areRead = true;
    readDelay(limited(controls.delay[i], 0.0f, longestTime));
    if (const float seconds = limitedCurve(controls.attack[i]); isChanged(attackTime, seconds)) {
        attackTime = seconds;
        if (attackCounter > 0) {
            const double left = 1.0 - attackIndex / (curves[EnvelopeCurves::Attack].size - 1);
            attackCounter = roundedDown(static_cast<int>(left * samplesOf(seconds)));
        }
    }
    readDecayAndSustain(limitedCurve(controls.decay[i]), limited(controls.sustain[i], 0.0f, 1.0f));
    if (const float seconds = limitedCurve(controls.release[i]); isChanged(releaseTime, seconds)) {
        releaseTime = seconds;
        if (!isIdle()) {
            lastValue = value;
            releaseIndex = 0.0;
        }
    }
    parameterCountdown = readEvery;
    holdTime = limited(controls.hold[i], 0.0f, longestTime);
    holdSamples = roundedDown(samplesOf(holdTime));
}

/// Of a delay that runs, what has passed counts; one that is over does not come back.
void EnvelopeGenerator::readDelay(float seconds) noexcept CINDER_REALTIME {
    if (!isChanged(delayTime, seconds)) return;
    delayTime = seconds;
    if (delayCounter == 0) return;
    const int passed = delayLength - delayCounter;
    delayLength = roundedUp(samplesOf(seconds));
    delayCounter = std::max(delayLength - passed, 0);
}

void EnvelopeGenerator::readDecayAndSustain(float seconds, float level) noexcept CINDER_REALTIME {
    if (!isChanged(decayTime, seconds) && !isChanged(sustainLevel, level)) return;
    decayTime = seconds;
    sustainLevel = level;
    restOffset = range == Range::RestAtZero ? level : 0.0f;
    if (phase != Phase::Running) value = rest();
    const float toCover = attackCounter < 1 ? std::abs(value - restOffset) : 1.0f - sustainLevel;
    decayRange = notBelowZero(toCover - sameValue);
    decayIndex = 0.0;
}

void EnvelopeGenerator::start(Controls& controls, int i) noexcept CINDER_REALTIME {
    readControls(controls, i);
    startRequested = false;
    attackStart = value;
    lastValue = value;
    holdCounter = 0;
    decayRange = notBelowZero(1.0f - sustainLevel - sameValue);
    delayLength = delayCounter = roundedUp(samplesOf(delayTime));
    attackCounter = roundedUp(samplesOf(attackTime));
    attackIndex = decayIndex = releaseIndex = 0.0;
    isReleasing = false;
    phase = Phase::Running;
    gate = true;
}

void EnvelopeGenerator::renderSegment(Writer& out, Controls* controls, int from,
                                      int to) noexcept CINDER_REALTIME {
    while (from < to) {
        int count = to - from;
        if (controls) {
            if (parameterCountdown == 0) readControls(*controls, from);
            const bool looksAgain = !controls->standStill || !controls->areRead;
            if (looksAgain) count = std::min(count, parameterCountdown);
            const int left = parameterCountdown - count;
            parameterCountdown = left >= 0 ? left : (readEvery - -left % readEvery) % readEvery;
        }
        renderChunk(out, count);
        from += count;
    }
}

/// Lengths are counted sample by sample; on blocks of multiples of 4 they stay such multiples.
void EnvelopeGenerator::renderChunk(Writer& out, int numSamples) noexcept CINDER_REALTIME {
    if (phase != Phase::Running) {
        value = rest();
        out.fill(value, numSamples);
        return;
    }
    int available = numSamples;  // until the release begins
    if (isReleasing) {
        available = 0;
    } else if (!gate) {
        available = std::clamp(holdSamples - holdCounter, 0, numSamples);
        holdCounter += numSamples;
    }
    const int numDelay = std::min(delayCounter, available);
    const int numAttack = std::min(attackCounter, available - numDelay);
    out.fill(value, numDelay);
    delayCounter -= numDelay;
    renderAttack(out, numAttack);
    renderDecay(out, available - numDelay - numAttack);
    if (available > 0) lastValue = value;
    renderRelease(out, numSamples - available);
}

void EnvelopeGenerator::renderAttack(Writer& out, int numSamples) noexcept CINDER_REALTIME {
    const float height = 1.0f - (sustainLevel - restOffset) - attackStart - sameValue;
    renderCurve(out, {curves[EnvelopeCurves::Attack], attackIndex, attackTime}, height, attackStart,
                numSamples);
    attackCounter -= numSamples;
}

void EnvelopeGenerator::renderDecay(Writer& out, int numSamples) noexcept CINDER_REALTIME {
    if (numSamples <= 0) return;
    if (value - restOffset > sameValue) {
        renderCurve(out, {curves[EnvelopeCurves::FallingDecay], decayIndex, decayTime}, decayRange,
                    restOffset, numSamples);
    } else if (restOffset - value > sameValue) {
        renderCurve(out, {curves[EnvelopeCurves::RisingDecay], decayIndex, decayTime}, decayRange,
                    restOffset - decayRange, numSamples);
    } else {
        value = restOffset;
        out.fill(value, numSamples);
    }
}

void EnvelopeGenerator::renderRelease(Writer& out, int numSamples) noexcept CINDER_REALTIME {
    if (numSamples <= 0) return;
    isReleasing = true;
    const FunctionTable& table = curves[EnvelopeCurves::Release];
    renderCurve(out, {table, releaseIndex, releaseTime}, lastValue - rest(), rest(), numSamples);
    if (releaseIndex >= table.size - 1) phase = Phase::Finished;
}

/// The section's table, from its place on, and its last entry from there on. The place moves on in
/// steps of double precision, so a cut leaves no trace.
void EnvelopeGenerator::renderCurve(Writer& out, const Section& section, float scale, float offset,
                                    int numSamples) noexcept CINDER_REALTIME {
    if (numSamples <= 0) return;
    const float* const entries = section.table.values.data();
    const int last = section.table.size - 1;
    const auto end = static_cast<double>(last);
    double index = section.index;
    if (index < end) {
        const float timeSamples = environment->getSampleRate() * section.seconds;
        const double step =
            static_cast<double>(section.table.scale) / static_cast<double>(timeSamples);
        float* const samples = out.take(numSamples);
        int i = 0;
        for (; i < numSamples && index < end; ++i) {
            const int whole = static_cast<int>(index);
            const auto fraction = static_cast<float>(index - whole);
            const float entry = entries[whole] + (entries[whole + 1] - entries[whole]) * fraction;
            samples[i] = entry * scale + offset;
            index += step;
        }
        std::fill(samples + i, samples + numSamples, entries[last] * scale + offset);
        section.index = std::min(index, end);
        value = samples[numSamples - 1];
    } else {
        value = entries[last] * scale + offset;
        out.fill(value, numSamples);
    }
}

int EnvelopeGenerator::samplesOf(float seconds) const noexcept CINDER_REALTIME {
    const auto samples = static_cast<double>(seconds * environment->getSampleRate());
    return static_cast<int>(std::min(samples, static_cast<double>(mostSamples)));
}

}  // namespace cinder
