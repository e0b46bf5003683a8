#include "dsp/filters/BiquadProcessor.h"

#include <algorithm>
#include <cmath>

namespace cinder {

namespace {

constexpr double fadeSeconds = 0.02;

}  // namespace

BiquadProcessor::BiquadProcessor(wave::Environment* environment, int maxSections, Carried carried)
    : Component(environment),
      coefficients(environment->getMaxBlockSize() / scheduleStep, maxSections),
      wetFactors(environment->getMaxBlockSize() / scheduleStep, 1),
      // Two schedules side by side change as often as both together.
      runs(static_cast<std::size_t>(environment->getMaxBlockSize() / scheduleStep * 2 + 2)),
      states(static_cast<std::size_t>(maxSections)),
      inForce(carried == Carried::Charge ? states.size() : 0) {}

bool BiquadProcessor::process(std::span<const Channel> channels, bool isShared,
                              int numSamples) noexcept CINDER_REALTIME {
    if (numSamples <= 0) return true;
    BiquadProcessor& first = *channels.front().processor;
    const auto isHeld = [](const Channel& channel) { return channel.processor->isHeld(); };
    if (isShared ? first.isHeld() : std::ranges::all_of(channels, isHeld))
        return processHeld(channels, isShared, numSamples);
    for (const Channel& channel : channels)
        channel.processor->layOutHeld(numSamples);
    const auto wetOf = [&](const Channel& channel) -> const Schedule<float>& {
        return isShared ? first.wetFactors : channel.processor->wetFactors;
    };
    const bool isAllDry = std::ranges::all_of(channels, [&](const Channel& channel) {
        const Schedule<float>& wet = wetOf(channel);
        return wet.size() == 1 && isNear(*wet.valuesAt(0), 0.0f);
    });
    if (!isAllDry) {
        const int numRuns = first.collectRuns(channels, isShared);
        first.runSections(channels, numRuns);
    }
    for (const Channel& channel : channels) {
        if (isAllDry)
            channel.processor->skipBlock(numSamples);
        else
            channel.processor->applyMix(wetOf(channel), channel.input, channel.output);
    }
    for (const Channel& channel : channels) {
        channel.processor->coefficients.clear();
        channel.processor->wetFactors.clear();
    }
    return !isAllDry;
}

void BiquadProcessor::layOutHeld(int numSamples) noexcept CINDER_REALTIME {
    if (isHeld()) schedule(held, heldWetFactor, numSamples);
    held = nullptr;
}

bool BiquadProcessor::processHeld(std::span<const Channel> channels, bool isShared,
                                  int numSamples) noexcept CINDER_REALTIME {
    BiquadProcessor& first = *channels.front().processor;
    const auto ownerOf = [&](const Channel& channel) {
        return isShared ? &first : channel.processor;
    };
    const bool isAllDry = std::ranges::all_of(channels, [&](const Channel& channel) {
        return isNear(ownerOf(channel)->heldWetFactor, 0.0f);
    });
    if (!isAllDry) {
        first.runs[0].numSamples = numSamples;
        for (std::size_t c = 0; c < channels.size(); ++c)
            first.runs[0].coefficients[c] = ownerOf(channels[c])->held;
        first.runSections(channels, 1);
    }
    for (const Channel& channel : channels) {
        if (isAllDry)
            channel.processor->skipBlock(numSamples);
        else
            channel.processor->applyMix(ownerOf(channel)->heldWetFactor, numSamples, channel.input,
                                        channel.output);
    }
    for (const Channel& channel : channels)
        channel.processor->held = nullptr;
    return !isAllDry;
}

void BiquadProcessor::skipBlock(int numSamples) noexcept CINDER_REALTIME {
    advanceRamp(static_cast<std::uint64_t>(numSamples));
    restartSoftly();
}

bool BiquadProcessor::restsAtZero(int numSections) const noexcept CINDER_REALTIME {
    return restart != Restart::None ||
           std::all_of(states.begin(), states.begin() + numSections, isAtRest);
}

void BiquadProcessor::rest(int numSections, int numSamples) noexcept CINDER_REALTIME {
    std::fill_n(states.begin(), numSections, BiquadState{});
    restart = Restart::None;
    advanceRamp(static_cast<std::uint64_t>(numSamples));
    clearSchedule();
}

void BiquadProcessor::missSamples(std::uint64_t numSamples) noexcept CINDER_REALTIME {
    advanceRamp(numSamples);
    restartSoftly();
}

void BiquadProcessor::reset() noexcept CINDER_REALTIME {
    restart = Restart::Hard;
    remaining = 0;
    mix = mixTarget;
}

void BiquadProcessor::setEnabled(bool isEnabled) noexcept CINDER_REALTIME {
    mixTarget = isEnabled ? 1.0f : 0.0f;
    const bool hasRun = environment->getPosition() > environment->getResetPosition();
    const auto length =
        static_cast<int>(fadeSeconds * static_cast<double>(environment->getSampleRate()));
    remaining = hasRun && mix != mixTarget ? length : 0;
    if (remaining > 0)
        mixStep = (mixTarget - mix) / static_cast<float>(length);
    else
        mix = mixTarget;
}

/// What the sections of a restarted filter remember is what they are about to hear.
void BiquadProcessor::prime(int section, float input) noexcept CINDER_REALTIME {
    const bool fromZero = restart == Restart::Hard || resetMode == ResetMode::FromZero;
    const double x = fromZero ? 0.0 : static_cast<double>(input);
    states[static_cast<std::size_t>(section)] = {x, x, x, x};
}

void BiquadProcessor::advanceRamp(std::uint64_t numSamples) noexcept CINDER_REALTIME {
    if (remaining == 0) return;
    const auto left = static_cast<std::uint64_t>(remaining);
    remaining = static_cast<int>(left - std::min(left, numSamples));
    mix = mixTarget - mixStep * static_cast<float>(remaining);
}

void BiquadProcessor::applyMix(const Schedule<float>& wet, const float* dry,
                               float* out) noexcept CINDER_REALTIME {
    for (std::size_t entry = 0; entry < wet.size(); ++entry) {
        const int count = wet.countAt(entry);
        applyMix(*wet.valuesAt(entry), count, dry, out);
        dry += count;
        out += count;
    }
}

void BiquadProcessor::applyMix(float wet, int numSamples, const float* dry,
                               float* out) noexcept CINDER_REALTIME {
    const int ramp = std::min(numSamples, remaining);
    for (int i = 0; i < ramp; ++i) {
        const float m = mixTarget - mixStep * static_cast<float>(remaining - i);
        out[i] = dry[i] + (out[i] - dry[i]) * (wet * m);
    }
    advanceRamp(static_cast<std::uint64_t>(ramp));
    const float rest = wet * mix;
    if (isNear(rest, 1.0f)) return;
    for (int i = ramp; i < numSamples; ++i)
        out[i] = dry[i] + (out[i] - dry[i]) * rest;
}

/// Cuts the block wherever the coefficients of one of the channels change.
int BiquadProcessor::collectRuns(std::span<const Channel> channels,
                                 bool isShared) noexcept CINDER_REALTIME {
    const Schedule<BiquadCoefficients>* schedules[maxBiquadLanes] = {};
    std::size_t entries[maxBiquadLanes] = {};
    int left[maxBiquadLanes] = {};  // samples until the entry ends
    for (std::size_t c = 0; c < channels.size(); ++c) {
        schedules[c] = isShared ? &coefficients : &channels[c].processor->coefficients;
        left[c] = schedules[c]->countAt(0);
    }
    int numRuns = 0;
    for (bool ended = false; !ended;) {
        BiquadRun& run = runs[static_cast<std::size_t>(numRuns++)];
        run.numSamples = *std::min_element(left, left + channels.size());
        for (std::size_t c = 0; c < channels.size(); ++c) {
            run.coefficients[c] = schedules[c]->valuesAt(entries[c]);
            left[c] -= run.numSamples;
            if (left[c] > 0) continue;
            ended = ++entries[c] == schedules[c]->size();
            if (!ended) left[c] = schedules[c]->countAt(entries[c]);
        }
    }
    return numRuns;
}

void BiquadProcessor::runSections(std::span<const Channel> channels,
                                  int numRuns) noexcept CINDER_REALTIME {
    if (!inForce.empty()) return runCharged(channels, numRuns);
    BiquadLane lanes[maxBiquadLanes] = {};
    bool restarts = false;
    for (std::size_t c = 0; c < channels.size(); ++c) {
        lanes[c] = {channels[c].input, channels[c].output, channels[c].processor->states.data()};
        restarts = restarts || channels[c].processor->restart != Restart::None;
    }
    const RunBiquads kernel = channels.size() == 1 ? biquadKernels->single : biquadKernels->pair;
    const int numSections = getNumSections();
    if (!restarts) return kernel(lanes, runs.data(), numRuns, 0, numSections);

    // A section's first input is known when the one before it has run.
    for (int s = 0; s < numSections; ++s) {
        for (std::size_t c = 0; c < channels.size(); ++c) {
            if (channels[c].processor->restart != Restart::None)
                channels[c].processor->prime(s, lanes[c].input[0]);
        }
        kernel(lanes, runs.data(), numRuns, s, 1);
        for (BiquadLane& lane : lanes)
            lane.input = lane.output;
    }
    for (const Channel& channel : channels)
        channel.processor->restart = Restart::None;
}

/// Run by run, since the states change in between.
void BiquadProcessor::runCharged(std::span<const Channel> channels,
                                 int numRuns) noexcept CINDER_REALTIME {
    const int numSections = getNumSections();
    BiquadLane lanes[maxBiquadLanes] = {};
    for (std::size_t c = 0; c < channels.size(); ++c) {
        BiquadProcessor& processor = *channels[c].processor;
        lanes[c] = {channels[c].input, channels[c].output, processor.states.data()};
        if (processor.restart != Restart::None)
            std::fill_n(processor.states.begin(), numSections, BiquadState{});
        processor.restart = Restart::None;
    }
    const RunBiquads kernel = channels.size() == 1 ? biquadKernels->single : biquadKernels->pair;
    for (int r = 0; r < numRuns; ++r) {
        const BiquadRun& run = runs[static_cast<std::size_t>(r)];
        carryCharges(channels, run, numSections);
        kernel(lanes, &run, 1, 0, numSections);
        for (std::size_t c = 0; c < channels.size(); ++c) {
            lanes[c].input += run.numSamples;
            lanes[c].output += run.numSamples;
        }
    }
}

void BiquadProcessor::carryCharges(std::span<const Channel> channels, const BiquadRun& run,
                                   int numSections) noexcept CINDER_REALTIME {
    const InForce* last = nullptr;  // neighbours mostly have the same coefficients
    for (std::size_t c = 0; c < channels.size(); ++c) {
        BiquadProcessor& processor = *channels[c].processor;
        for (int s = 0; s < numSections; ++s) {
            const BiquadCoefficients& next = run.coefficients[c][s];
            InForce& before = processor.inForce[static_cast<std::size_t>(s)];
            if (next == before.coefficients) continue;
            const InForce now =
                last && last->coefficients == next ? *last : InForce{next, HeldCharge(next)};
            before.charge.carry(now.charge, processor.stateOf(s));
            before = now;
            last = &before;
        }
    }
}

}  // namespace cinder
