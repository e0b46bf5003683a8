#include "modulation/sources/envelopes/EnvelopeFollower.h"

#include <cmath>

#include "core/Constants.h"
#include "modulation/sources/envelopes/EnvelopeKernels.h"

namespace cinder {

namespace {

constexpr float shortestTime = 0.0005f;
constexpr float longestTime = 10.0f;
constexpr double decadeNepers = 2.302585092994046;  // ln 10

/// Written so that a NaN ends at the shortest time.
float limitedTime(float seconds) noexcept CINDER_REALTIME {
    if (!(seconds > shortestTime)) return shortestTime;
    return seconds < longestTime ? seconds : longestTime;
}

}  // namespace

EnvelopeFollower::EnvelopeFollower(wave::Environment* environment, FollowerLevels* sharedLevels)
    : Filter(environment),
      attack(environment, shortestTime, shortestTime, longestTime),
      release(environment, 0.1f, shortestTime, longestTime),
      ownLevels(sharedLevels ? nullptr : std::make_unique<FollowerLevels>(environment)),
      inputLevels(sharedLevels ? *sharedLevels : *ownLevels) {
    setRenderPriority(1);
}

void EnvelopeFollower::process(wave::BasicBlock<float>*, wave::BasicBlock<float>* out,
                               int numSamples, unsigned) noexcept CINDER_REALTIME {
    const bool rests = inputLevels.of(*input, numSamples).areZero && isAtRest();
    if (rests)
        passOn(environment->getZeroBlock());
    else
        follow(out->data(), numSamples);
    setConstant(rests);
    shown.store(rests ? 0.0f : (*out)[0], std::memory_order_relaxed);
}

/// A level nears 0 for ever; from here on nothing of it can be told from 0.
bool EnvelopeFollower::isAtRest() noexcept CINDER_REALTIME {
    if (!(std::abs(level) <= sameValue)) return false;
    level = 0.0f;
    return true;
}

void EnvelopeFollower::follow(float* out, int numSamples) noexcept CINDER_REALTIME {
    // The times come first: a pull may end up in other followers, which share the levels.
    const float* const attacks = attack.pull(numSamples)->data();
    const float* const releases = release.pull(numSamples)->data();
    const float* const levels = inputLevels.of(*input, numSamples).samples;
    if (!attack.isConstant() || !release.isConstant()) {
        followThroughMovingTimes(attacks, releases, levels, out, numSamples);
        return;
    }
    const float rate = environment->getSampleRate();
    const float up = attackCoefficient.of(limitedTime(attacks[0]) * rate);
    const float down = releaseCoefficient.of(limitedTime(releases[0]) * rate);
    level = envelopeKernels->follow(levels, out, numSamples, {level, up, down});
}

void EnvelopeFollower::followThroughMovingTimes(const float* attacks, const float* releases,
                                                const float* levels, float* out,
                                                int numSamples) noexcept CINDER_REALTIME {
    const float rate = environment->getSampleRate();
    for (int i = 0; i < numSamples; ++i) {
        const float d = levels[i] - level;
        level += d * (d <= 0.0f ? releaseCoefficient.of(limitedTime(releases[i]) * rate)
                                : attackCoefficient.of(limitedTime(attacks[i]) * rate));
        out[i] = level * followerOutputPerDb;
    }
}

float EnvelopeFollower::Coefficient::of(float timeSamples) noexcept CINDER_REALTIME {
    if (std::abs(timeSamples - lastSamples) > sameValue) {
        lastSamples = timeSamples;
        const double nepers = decadeNepers / static_cast<double>(timeSamples);
        value = static_cast<float>(1.0 - std::exp(-nepers));
    }
    return value;
}

}  // namespace cinder
