#include "cinder/audio/ResamplingReader.h"

#include "support/Rng.h"
#include "tools/audio/AudioFixtures.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <iterator>

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

/// Away from the ends, where the converter sees the edge of the sound.
double worstDifference(const std::vector<float>& a, const std::vector<float>& b, int edge) {
    double worst = 0.0;
    for (size_t n = static_cast<size_t>(edge); n + static_cast<size_t>(edge) < a.size(); ++n)
        worst = std::max(worst, static_cast<double>(std::abs(a[n] - b[n])));
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
            CHECK(std::ssize(readAll(reader, {333})[0]) == expected);
        }
}

TEST_CASE("ResamplingReader: a sine keeps level, frequency and phase, and nothing folds") {
    for (const RatePair pair : ratePairs)
        for (const double hz : {100.0, 997.0, 0.4 * std::min(pair.from, pair.to)}) {
            INFO(hz << " Hz, " << pair.from << " to " << pair.to);
            const Audio in = {sine(hz, pair.from, pair.from), sine(hz / 2, pair.from, pair.from)};
            const Audio out = resample(in, pair, {512, 77});
            CHECK(worstDifference(out[0], sine(hz, pair.to, pair.to), pair.to / 20) < 1e-6);
            CHECK(worstDifference(out[1], sine(hz / 2, pair.to, pair.to), pair.to / 20) < 1e-6);
        }
    const Audio out = resample({sine(20000.0, 96000, 96000)}, {96000, 32000});
    CHECK(worstDifference(out[0], std::vector<float>(32000), 1600) < 1e-6);
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

TEST_CASE("ResamplingReader: what isn't finite counts as 0, a rate below 1 is one clear line") {
    Audio audio = {sine(440.0, 44100, 20000)};
    audio[0][9000] = audio[0][9001] = 0.0f;
    const Audio expected = resample(audio, {44100, 48000});
    audio[0][9000] = NAN;
    audio[0][9001] = -INFINITY;
    CHECK(resample(audio, {44100, 48000}) == expected);
    for (const int rate : {0, -1})
        CHECK(isOneLine(errorOf([&] { resample(audio, {44100, rate}); })));
}

}  // namespace cinder::test
