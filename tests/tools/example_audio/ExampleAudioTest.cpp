#include "example_audio/Finish.h"
#include "example_audio/Instruments.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace cinder::example {

namespace {

struct Example {
    std::string name;
    Loop (*make)(int rate);
};
const Example examples[] = {
    {"drums", makeDrums}, {"chord", makeChord}, {"bass", makeBass},
    {"voice", makeVoice}, {"mix", makeMix},
};

double peakOf(const std::vector<float>& samples) {
    float highest = 0.0f;
    for (const float x : samples)
        highest = std::max(highest, std::abs(x));
    return static_cast<double>(highest);
}

double meanPower(const std::vector<float>& samples, size_t from, size_t count) {
    double sum = 0.0;
    for (size_t n = from; n < from + count; ++n)
        sum += std::pow(static_cast<double>(samples[n]), 2.0);
    return sum / static_cast<double>(count);
}

double mean(const std::vector<float>& samples) {
    double sum = 0.0;
    for (const float x : samples)
        sum += static_cast<double>(x);
    return sum / static_cast<double>(samples.size());
}

void checkLoop(const std::vector<float>& samples, int rate) {
    REQUIRE(static_cast<int>(samples.size()) == rate * 96 / 10);
    CHECK(std::abs(mean(samples)) < 1e-4);
    CHECK(std::abs(samples.front()) < 1e-4f);
    CHECK(std::abs(samples.back()) < 1e-4f);
    // Music, not a click in silence: every beat but the first and last, where the singer breathes,
    // is heard, and the peak stands 9 to 20 dB above the whole.
    const auto beat = static_cast<size_t>(rate * 6 / 10);
    for (size_t n = beat; n < 15 * beat; n += beat)
        CHECK(meanPower(samples, n, beat) > 1e-4);
    const double crest = peakOf(samples) / std::sqrt(meanPower(samples, 0, samples.size()));
    CHECK(crest > 2.8);
    CHECK(crest < 10.0);
}

}  // namespace

TEST_CASE("ExampleAudio: every loop is loud, whole, free of DC and quiet at its ends") {
    for (const Example& example : examples)
        for (const int rate : {44100, 48000}) {
            const Loop loop = example.make(rate);
            for (const size_t numChannels : {1u, 2u}) {
                INFO(example.name << ", " << rate << " Hz, channels " << numChannels);
                const auto channels = finished(loop, static_cast<int>(numChannels));
                REQUIRE(channels.size() == numChannels);
                double highest = 0.0;
                for (const auto& channel : channels) {
                    checkLoop(channel, rate);
                    highest = std::max(highest, peakOf(channel));
                }
                CHECK(highest == doctest::Approx(gainOfDb(-3.0)).epsilon(1e-6));
            }
        }
}

TEST_CASE("ExampleAudio: stereo is wide, but holds together in mono") {
    for (const Example& example : examples) {
        INFO(example.name);
        const auto channels = finished(example.make(48000), 2);
        auto mid = channels[0];
        auto side = channels[0];
        for (size_t n = 0; n < mid.size(); ++n) {
            mid[n] += channels[1][n];
            side[n] -= channels[1][n];
        }
        const double ratio = meanPower(side, 0, side.size()) / meanPower(mid, 0, mid.size());
        CHECK(ratio > 0.003);
        CHECK(ratio < 0.6);
    }
}

TEST_CASE("ExampleAudio: a second run gives the same bits") {
    CHECK(finished(makeMix(44100), 2) == finished(makeMix(44100), 2));  // all the others are in it
}

}  // namespace cinder::example
