#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

#include "dsp/filters/crossover/MultiBand.h"
#include "support/Rng.h"
#include "support/StageRig.h"

namespace cinder::test {

using Samples = std::vector<float>;

inline Samples impulse(int numSamples) {
    Samples samples(static_cast<std::size_t>(numSamples), 0.0f);
    samples[0] = 1.0f;
    return samples;
}

inline Samples sine(double amplitude, double cyclesPerSample, int numSamples) {
    Samples samples;
    for (int i = 0; i < numSamples; ++i)
        samples.push_back(
            static_cast<float>(amplitude * std::sin(2.0 * std::numbers::pi * cyclesPerSample * i)));
    return samples;
}

/// sum h[n] exp(-j w n).
inline std::complex<double> responseOf(const Samples& h, double cyclesPerSample) {
    std::complex<double> sum = 0.0, turn = 1.0;
    const auto step = std::polar(1.0, -2.0 * std::numbers::pi * cyclesPerSample);
    for (const float sample : h) {
        sum += static_cast<double>(sample) * turn;
        turn *= step;
    }
    return sum;
}

inline double largestStep(const Samples& samples) {
    float largest = 0.0f;
    for (std::size_t i = 1; i < samples.size(); ++i)
        largest = std::max(largest, std::abs(samples[i] - samples[i - 1]));
    return static_cast<double>(largest);
}

/// One channel split into bands.
struct SplitRig {
    using Bands = std::array<Samples, MultiBand::maxBands>;

    SplitRig(float sampleRate, Samples signal)
        : isSet((environment.setSampleRate(sampleRate), true)),
          source(&environment, std::move(signal)),
          split(&environment, &model) {
        split.setInput(&source);
        model.sampleRate = sampleRate;
    }
    void set(int bands, CrossoverSlope slope, const std::vector<double>& hz) {
        UpdateBracket bracket(model);
        model.bandCount.assign(bands);
        constexpr float dbPerOctave[] = {6.0f, 12.0f, 24.0f, 36.0f, 48.0f};
        for (std::size_t i = 0; i < hz.size(); ++i) {
            auto& crossover = model.getCrossover(static_cast<int>(i));
            crossover.frequency = static_cast<float>(std::log2(hz[i]));
            crossover.slope = dbPerOctave[static_cast<int>(slope)];
        }
    }
    /// Runs cycles under the guard, and appends what the bands give.
    void play(Bands& bands, const std::vector<int>& pieces) {
        std::size_t total = bands[0].size();
        for (const int n : pieces)
            total += static_cast<std::size_t>(n);
        for (Samples& band : bands)
            band.reserve(total);
        RealtimeGuard guard;
        for (const int n : pieces) {
            environment.beginBlock();
            for (int i = 0; i < MultiBand::maxBands; ++i) {
                const float* const block = split.getOutput(i)->pull(n)->data();
                auto& band = bands[static_cast<std::size_t>(i)];
                band.insert(band.end(), block, block + n);
            }
            environment.render(n, 0);
        }
    }
    Bands play(int numSamples, int blockSize = 256) {
        Bands bands;
        std::vector<int> pieces(static_cast<std::size_t>(numSamples / blockSize), blockSize);
        if (numSamples % blockSize > 0) pieces.push_back(numSamples % blockSize);
        play(bands, pieces);
        return bands;
    }
    static Samples sumOf(const Bands& bands) {
        Samples sum(bands[0].size(), 0.0f);
        for (const Samples& band : bands)
            for (std::size_t i = 0; i < sum.size(); ++i)
                sum[i] += band[i];
        return sum;
    }

    wave::Environment environment;
    bool isSet;  // the rate, before anything stands on it
    SignalSource source;
    CrossoverMultiBandModel model;
    MultiBand split;
};

/// Frequencies of crossovers in ascending order.
inline std::vector<double> ascendingHz(Rng& rng, int count, double from, double to) {
    std::vector<double> hz;
    for (int i = 0; i < count; ++i)
        hz.push_back(from * std::pow(to / from, rng.real(0.0, 1.0)));
    std::sort(hz.begin(), hz.end());
    return hz;
}

constexpr CrossoverSlope allSlopes[] = {CrossoverSlope::Db6, CrossoverSlope::Db12,
                                        CrossoverSlope::Db24, CrossoverSlope::Db36,
                                        CrossoverSlope::Db48};

}  // namespace cinder::test
