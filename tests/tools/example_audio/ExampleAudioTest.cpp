#include "example_audio/Finish.h"
#include "example_audio/Instruments.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <span>
#include <vector>

namespace cinder::example {

namespace {

const struct {
    const char* name;
    Loop (*make)(int rate);
} examples[] = {{"drums", makeDrums}, {"chord", makeChord},   {"bass", makeBass},
                {"voice", makeVoice}, {"guitar", makeGuitar}, {"mix", makeMix}};

double meanPower(std::span<const float> samples) {
    double sum = 0.0;
    for (const float x : samples)
        sum += std::pow(static_cast<double>(x), 2.0);
    return sum / static_cast<double>(samples.size());
}

void checkLoop(std::span<const float> samples, int rate) {
    REQUIRE(std::ssize(samples) == rate * 96 / 10);
    CHECK(std::abs(std::accumulate(samples.begin(), samples.end(), 0.0)) < 1e-4 * 9.6 * rate);
    CHECK(std::abs(samples.front()) < 1e-4f);
    CHECK(std::abs(samples.back()) < 1e-4f);
    // Music, not a click in silence: every beat but the first and last, where the singer breathes,
    // is heard.
    const auto beat = static_cast<size_t>(rate * 6 / 10);
    for (size_t n = beat; n < 15 * beat; n += beat)
        CHECK(meanPower(samples.subspan(n, beat)) > 1e-4);
}

}  // namespace

TEST_CASE("ExampleAudio: every loop is loud, whole, free of DC, and holds together in mono") {
    for (const auto& [name, make] : examples)
        for (const int rate : {44100, 48000})
            for (const int numChannels : {1, 2}) {
                INFO(name << ", " << rate << " Hz, channels " << numChannels);
                const auto channels = finished(make(rate), numChannels);
                REQUIRE(std::ssize(channels) == numChannels);
                float highest = 0.0f;
                for (const auto& channel : channels) {
                    checkLoop(channel, rate);
                    const auto [low, high] = std::ranges::minmax(channel);
                    highest = std::max({highest, -low, high});
                    // The peak stands 9 to 20 dB above the whole.
                    const double crest =
                        static_cast<double>(std::max(-low, high)) / std::sqrt(meanPower(channel));
                    CHECK(crest > 2.8);
                    CHECK(crest < 10.0);
                }
                CHECK(static_cast<double>(highest) ==
                      doctest::Approx(gainOfDb(-3.0)).epsilon(1e-6));
                if (numChannels == 1) continue;
                auto mid = channels[0], side = channels[0];
                for (size_t n = 0; n < mid.size(); ++n) {
                    mid[n] += channels[1][n];
                    side[n] -= channels[1][n];
                }
                const double ratio = meanPower(side) / meanPower(mid);
                CHECK(ratio > 0.003);
                CHECK(ratio < 0.6);
            }
}

TEST_CASE("ExampleAudio: a second run gives the same bits") {
    CHECK(finished(makeMix(44100), 2) == finished(makeMix(44100), 2));  // all but one are in it
    CHECK(finished(makeGuitar(44100), 2) == finished(makeGuitar(44100), 2));
}

}  // namespace cinder::example
