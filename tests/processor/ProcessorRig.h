#pragma once

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "processor/CinderProcessor.h"
#include "support/RealtimeGuard.h"

namespace cinder::test {

using Channels = std::vector<std::vector<float>>;

/// The product, played as a host plays it, every block under the guard.
class ProcessorRig {
public:
    explicit ProcessorRig(float sampleRate = 48000.0f, std::int32_t layout = stereoLayout)
        : processor(std::make_unique<CinderProcessor>(layout, 1)) {
        processor->getEnvironment()->setSampleRate(sampleRate);
        processor->reset();
    }

    AbstractPluginParameter& parameter(const std::string& name) const {
        for (int id = 0; id < processor->parameterCount(); ++id)
            if (processor->parameter(id)->getName() == name) return *processor->parameter(id);
        FAIL("no parameter " << name);
        return *processor->parameter(0);
    }
    /// As a user types it; takes effect with the next block.
    void set(const std::string& name, const std::string& text) const {
        float value = 0.0f;
        INFO(name << " = " << text);
        REQUIRE(parameter(name).parseText(text, value));
        parameter(name).setValue(value, 0);
    }
    /// What is set from here on jumps.
    void jump() const { processor->requestDiscontinuity(); }

    /// `in` has the main channels, and those of a side chain behind them.
    Channels play(const Channels& in, int blockSize = 512) const {
        return playPieces(in, evenPieces(static_cast<int>(in.front().size()), blockSize));
    }
    Channels playPieces(const Channels& in, const std::vector<int>& pieces) const {
        const auto numChannels = static_cast<std::size_t>(processor->getChannelCount());
        Channels out(numChannels, std::vector<float>(in.front().size()));
        std::vector<const float*> inputs(in.size());
        std::vector<float*> outputs(numChannels);
        std::size_t position = 0;
        const RealtimeGuard guard;
        for (const int n : pieces) {
            for (std::size_t c = 0; c < inputs.size(); ++c)
                inputs[c] = in[c].data() + position;
            for (std::size_t c = 0; c < numChannels; ++c)
                outputs[c] = out[c].data() + position;
            processor->process(inputs.data(), static_cast<int>(inputs.size()), outputs.data(),
                               static_cast<int>(numChannels), n);
            position += static_cast<std::size_t>(n);
        }
        return out;
    }

    static std::vector<int> evenPieces(int total, int length) {
        std::vector<int> pieces(static_cast<std::size_t>(total / length), length);
        if (total % length > 0) pieces.push_back(total % length);
        return pieces;
    }

    std::unique_ptr<CinderProcessor> processor;
};

inline Channels sines(int numSamples, float peak, double cyclesPerSample, int numChannels = 2) {
    Channels channels;
    for (int c = 0; c < numChannels; ++c) {
        auto& channel = channels.emplace_back(static_cast<std::size_t>(numSamples));
        for (int i = 0; i < numSamples; ++i)
            channel[static_cast<std::size_t>(i)] =
                peak *
                static_cast<float>(std::sin(6.283185307179586 * cyclesPerSample * (i + 3 * c)));
    }
    return channels;
}

inline Channels silence(int numSamples, int numChannels = 2) {
    return Channels(static_cast<std::size_t>(numChannels),
                    std::vector<float>(static_cast<std::size_t>(numSamples)));
}

inline float peakOf(const std::vector<float>& samples, std::size_t from = 0) {
    float peak = 0.0f;
    for (std::size_t i = from; i < samples.size(); ++i)
        peak = std::max(peak, std::abs(samples[i]));
    return peak;
}

inline float largestStep(const std::vector<float>& samples, std::size_t from = 1) {
    float step = 0.0f;
    for (std::size_t i = std::max<std::size_t>(from, 1); i < samples.size(); ++i)
        step = std::max(step, std::abs(samples[i] - samples[i - 1]));
    return step;
}

/// The largest difference between `out` and `in` played `delay` samples later.
inline float differenceAt(int delay, const std::vector<float>& in, const std::vector<float>& out,
                          std::size_t from) {
    float difference = 0.0f;
    for (std::size_t i = from; i < out.size(); ++i)
        difference =
            std::max(difference, std::abs(out[i] - in[i - static_cast<std::size_t>(delay)]));
    return difference;
}

}  // namespace cinder::test
