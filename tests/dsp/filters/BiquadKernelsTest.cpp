#include "dsp/filters/BiquadKernels.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "support/Rng.h"

namespace cinder {
namespace {

using test::Rng;

constexpr int blockSize = 256;

/// Poles at a random radius and angle.
BiquadCoefficients randomCoefficients(Rng& rng) {
    const double radius = rng.real(0.0, 0.995);
    return {rng.real(-1.0, 1.0), rng.real(-1.0, 1.0), rng.real(-1.0, 1.0),
            -2.0 * radius * std::cos(rng.real(0.0, 3.14)), radius * radius};
}

struct Channel {
    std::vector<float> in, out = std::vector<float>(blockSize);
    std::vector<BiquadState> states;
    std::vector<std::vector<BiquadCoefficients>> coefficients;  // of each run

    Channel(Rng& rng, int numSections, std::size_t numRuns)
        : in(rng.noise(blockSize)),
          states(static_cast<std::size_t>(numSections)),
          coefficients(numRuns) {
        for (BiquadState& s : states)
            s = {rng.real(-1, 1), rng.real(-1, 1), rng.real(-1, 1), rng.real(-1, 1)};
        for (auto& ofRun : coefficients)
            for (int s = 0; s < numSections; ++s)
                ofRun.push_back(randomCoefficients(rng));
    }
    BiquadLane lane() { return {in.data(), out.data(), states.data()}; }
};

bool haveSameBits(const Channel& a, const Channel& b) {
    const auto equal = [](const BiquadState& s, const BiquadState& t) {
        return s.x1 == t.x1 && s.x2 == t.x2 && s.y1 == t.y1 && s.y2 == t.y2;
    };
    return a.out == b.out && std::ranges::equal(a.states, b.states, equal);
}

/// From the definition.
std::vector<float> reference(const Channel& channel, const std::vector<int>& counts) {
    std::vector<float> signal = channel.in;
    for (std::size_t s = 0; s < channel.states.size(); ++s) {
        const BiquadState& start = channel.states[s];
        std::vector<double> x = {start.x2, start.x1}, y = {start.y2, start.y1};
        std::size_t i = 0;
        for (std::size_t run = 0; run < counts.size(); ++run)
            for (int n = 0; n < counts[run]; ++n, ++i) {
                const BiquadCoefficients& c = channel.coefficients[run][s];
                x.push_back(static_cast<double>(signal[i]));
                y.push_back(c.b0 * x[i + 2] + c.b1 * x[i + 1] + c.b2 * x[i] - c.a1 * y[i + 1] -
                            c.a2 * y[i]);
            }
        std::transform(y.begin() + 2, y.end(), signal.begin(),
                       [](double v) { return static_cast<float>(v); });
    }
    return signal;
}

TEST_CASE("BiquadKernels: one and two lanes have the bits of the plain form, which is right") {
    Rng rng = Rng::fromEnvironment();
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        for (int numSections = 1; numSections <= 8; ++numSections)
            for (const int longest : {3, 40, blockSize}) {
                INFO(simd::nameOf(set) << ", sections " << numSections << ", runs up to " << longest
                                       << ", seed " << rng.seed());
                const std::vector<int> counts = rng.pieces(blockSize, longest);
                Channel a(rng, numSections, counts.size()), b(rng, numSections, counts.size());
                const std::vector<float> wanted = reference(a, counts);
                std::vector<BiquadRun> runs[2];
                for (std::size_t i = 0; i < counts.size(); ++i) {
                    const auto* const ofA = a.coefficients[i].data();
                    const auto* const ofB = b.coefficients[i].data();
                    runs[0].push_back({counts[i], {ofA, ofB}});
                    runs[1].push_back({counts[i], {ofB, nullptr}});
                }
                const auto run = [&](RunBiquads kernel, const BiquadLane* lanes, int channel) {
                    kernel(lanes, runs[channel].data(), static_cast<int>(counts.size()), 0,
                           numSections);
                };
                Channel plain[] = {a, b}, single = a, pair[] = {a, b};
                for (int c = 0; c < 2; ++c) {
                    const BiquadLane lane = plain[c].lane();
                    run(biquadKernels->plain, &lane, c);
                }
                const BiquadLane lane = single.lane();
                run(biquadKernels->single, &lane, 0);
                const BiquadLane lanes[] = {pair[0].lane(), pair[1].lane()};
                run(biquadKernels->pair, lanes, 0);

                CHECK(haveSameBits(single, plain[0]));
                CHECK(haveSameBits(pair[0], plain[0]));
                CHECK(haveSameBits(pair[1], plain[1]));
                float loudest = 0.0f, difference = 0.0f;
                for (std::size_t i = 0; i < wanted.size(); ++i) {
                    loudest = std::max(loudest, std::abs(wanted[i]));
                    difference = std::max(difference, std::abs(wanted[i] - plain[0].out[i]));
                }
                CHECK(difference <= 1e-5f * loudest);
            }
    }
}

/// As steps: of every section, one set of coefficients for all runs or one for each.
struct Steps {
    Steps(const Channel& channel, Channel* lanes) : sets(channel.states.size()) {
        for (std::size_t s = 0; s < sets.size(); ++s) {
            for (const auto& ofRun : channel.coefficients)
                sets[s].push_back(ofRun[s]);
            steps.push_back({sets[s].data(),
                             sets[s].size() > 1 && sets[s][0] != sets[s][1] ? 1 : 0,
                             {&lanes[0].states[s], &lanes[1].states[s]}});
        }
    }
    std::vector<std::vector<BiquadCoefficients>> sets;
    std::vector<BiquadStep> steps;
};

TEST_CASE("BiquadKernels: sections of several filters have the bits of the plain form") {
    Rng rng = Rng::fromEnvironment();
    const auto check = [&rng](int numSections, int numRuns, int runLength, int n) {
        INFO("sections " << numSections << ", runs " << numRuns << " of " << runLength
                         << ", samples " << n << ", seed " << rng.seed());
        Channel plain[] = {Channel(rng, numSections, static_cast<std::size_t>(numRuns)),
                           Channel(rng, numSections, 1)};
        for (auto& ofRun : plain[0].coefficients)
            for (std::size_t s = 1; s < ofRun.size(); s += 3)
                ofRun[s] = plain[0].coefficients[0][s];  // some stand still
        plain[1].coefficients = plain[0].coefficients;
        Channel together[] = {plain[0], plain[1]};
        for (Channel& channel : plain) {
            std::vector<BiquadRun> runs;
            for (int i = 0; i < numRuns; ++i)
                runs.push_back({i + 1 < numRuns ? runLength : n - i * runLength,
                                {channel.coefficients[static_cast<std::size_t>(i)].data()}});
            const BiquadLane lane = channel.lane();
            biquadKernels->plain(&lane, runs.data(), numRuns, 0, numSections);
        }
        const Steps steps(plain[0], together);
        const BiquadLane lanes[] = {together[0].lane(), together[1].lane()};
        biquadKernels->steps(lanes, steps.steps.data(), numSections, runLength, n);
        CHECK(haveSameBits(together[0], plain[0]));
        CHECK(haveSameBits(together[1], plain[1]));
    };
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        INFO(simd::nameOf(set));
        for (int numSections = 1; numSections <= 5; ++numSections) {
            for (const int n : {1, 2, 5, 6, 44, blockSize})
                check(numSections, 1, n, n);
            for (const int n : {33, 48, 64, 65, 71, 95})
                check(numSections, (n + 31) / 32, 32, n);
        }
    }
}

}  // namespace
}  // namespace cinder
