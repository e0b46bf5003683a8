#include "cinder/audio/ResamplingReader.h"

#include "support/Rng.h"
#include "tools/audio/AudioFixtures.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace cinder::test {

namespace {

struct RatePair {
    int from, to;
};
constexpr RatePair ratePairs[] = {
    {44100, 48000}, {48000, 44100}, {48000, 96000}, {192000, 44100},
    {8000, 48000},  {48000, 48000}, {44100, 44101}, {96000, 11025},
};

Audio resample(Audio audio, RatePair pair, const std::vector<int>& pieces = {1000}) {
    MemoryReader source(std::move(audio), pair.from);
    ResamplingReader reader(source, pair.to);
    return readAll(reader, pieces);
}

/// The largest distance from a sine of amplitude 1 that starts at phase 0, away from the ends,
/// where the converter sees the edge of the sound.
double worstDeviation(const std::vector<float>& samples, double hz, int rate, double edgeSeconds) {
    const std::vector<float> ideal = sine(hz, rate, static_cast<int>(samples.size()));
    const auto edge = static_cast<size_t>(edgeSeconds * rate);
    double worst = 0.0;
    for (size_t n = edge; n + edge < samples.size(); ++n)
        worst = std::max(worst, static_cast<double>(std::abs(samples[n] - ideal[n])));
    return worst;
}

}  // namespace

TEST_CASE("ResamplingReader: the length is exact, down to one sample") {
    for (const RatePair pair : ratePairs)
        for (const int frames : {1, 2, 100, 4096, 44100, 50021}) {
            INFO(frames << " frames, " << pair.from << " to " << pair.to);
            MemoryReader source({std::vector<float>(static_cast<size_t>(frames), 0.5f)}, pair.from);
            ResamplingReader reader(source, pair.to);
            const auto expected = std::max<std::int64_t>(
                1, std::llround(static_cast<double>(frames) * pair.to / pair.from));
            CHECK(reader.numFrames() == expected);
            CHECK(static_cast<std::int64_t>(readAll(reader, {333})[0].size()) == expected);
        }
}

TEST_CASE("ResamplingReader: a sine keeps level, frequency and phase all the way") {
    for (const RatePair pair : ratePairs)
        for (const double hz : {100.0, 997.0, 0.4 * std::min(pair.from, pair.to)}) {
            INFO(hz << " Hz, " << pair.from << " to " << pair.to);
            const Audio out =
                resample({sine(hz, pair.from, pair.from), sine(hz / 2, pair.from, pair.from)}, pair,
                         {512, 77});
            CHECK(worstDeviation(out[0], hz, pair.to, 0.05) < 1e-6);
            CHECK(worstDeviation(out[1], hz / 2, pair.to, 0.05) < 1e-6);
        }
}

TEST_CASE("ResamplingReader: what is above the new Nyquist frequency is gone") {
    const Audio out = resample({sine(20000.0, 96000, 96000)}, {96000, 32000});
    for (size_t n = 1600; n + 1600 < out[0].size(); ++n)
        REQUIRE(std::abs(out[0][n]) < 1e-6f);
}

TEST_CASE("ResamplingReader: any cut into reads gives the same bits") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const Audio audio = {rng.noise(30000), rng.noise(30000)};
    for (const RatePair pair : ratePairs) {
        INFO(pair.from << " to " << pair.to);
        const Audio whole = resample(audio, pair, {1000000});
        CHECK(resample(audio, pair, {1, 512, 3}) == whole);
        CHECK(resample(audio, pair, {rng.integer(1, 5000), rng.integer(1, 5000)}) == whole);
    }
}

TEST_CASE("ResamplingReader: a sample that isn't finite counts as 0") {
    Audio audio = {sine(440.0, 44100, 20000)};
    audio[0][9000] = 0.0f;
    audio[0][9001] = 0.0f;
    const Audio expected = resample(audio, {44100, 48000});
    audio[0][9000] = std::numeric_limits<float>::quiet_NaN();
    audio[0][9001] = -std::numeric_limits<float>::infinity();
    CHECK(resample(audio, {44100, 48000}) == expected);
}

TEST_CASE("ResamplingReader: a rate that makes no sense is one clear line") {
    MemoryReader source({{0.5f}}, 44100);
    for (const int rate : {0, -1})
        CHECK(isOneLine(errorOf([&] { ResamplingReader reader(source, rate); })));
}

}  // namespace cinder::test
