#include "cinder/shaper/ShaperProcessor.h"

#include "support/Rng.h"
#include "tools/shaper/ShaperFixture.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

namespace cinder::test {

namespace {

constexpr int factors[] = {1, 2, 4, 8};  // by the value of Oversampling

Channels noise(Rng& rng, int numChannels, int numFrames, float peak = 0.8f) {
    Channels audio;
    for (int channel = 0; channel < numChannels; ++channel)
        audio.push_back(rng.noise(numFrames, peak));
    return audio;
}

double worstDifference(const Channels& a, const Channels& b) {
    double worst = 0.0;
    for (std::size_t channel = 0; channel < a.size(); ++channel)
        for (std::size_t n = 0; n < a[channel].size(); ++n)
            worst = std::max(worst, std::abs(static_cast<double>(a[channel][n]) -
                                             static_cast<double>(b[channel][n])));
    return worst;
}

/// Drive goes from 0 to 30 dB and back, Level the other way, while noise passes through. Each part
/// begins a host block, so that the controls move at the same samples for any cut.
Channels renderMoving(int log2Factor, const Channels& parts, const std::vector<int>& blocks) {
    ShaperFixture shaper(1);
    shaper.set(oversamplingId, static_cast<float>(log2Factor));
    Channels output;
    for (std::size_t turn = 0; turn < parts.size(); ++turn) {
        shaper.set(driveId, turn % 2 == 0 ? 0.0f : 30.0f);
        shaper.set(levelId, turn % 2 == 0 ? 0.0f : -24.0f);
        output.push_back(shaper.render({parts[turn]}, blocks)[0]);
    }
    return output;
}

}  // namespace

TEST_CASE("ShaperProcessor: any cut gives the same bits after a reset, for every curve") {
    Rng rng = Rng::fromEnvironment();
    for (int log2Factor = 0; log2Factor < 4; ++log2Factor)
        for (int curve = 0; curve < numCurves; ++curve) {
            const int numChannels = 1 + curve % 2;
            const Channels input = noise(rng, numChannels, 5000);
            ShaperFixture shaper(numChannels);
            shaper.set(oversamplingId, static_cast<float>(log2Factor));
            shaper.set(curveId, static_cast<float>(curve));
            const Channels whole = shaper.render(input, {5000});
            for (const auto& blocks : std::vector<std::vector<int>>{
                     {1}, {3}, {64}, {255}, {256}, {257}, {4096}, rng.pieces(5000, 600)}) {
                INFO("factor " << factors[log2Factor] << ", curve " << curveNames[curve]
                               << ", blocks of " << blocks[0] << ", seed " << rng.seed());
                shaper.processor.reset();
                REQUIRE(shaper.render(input, blocks) == whole);
            }
        }
}

TEST_CASE("ShaperProcessor: while controls move, the cut shows in no more than their rounding") {
    // A ramp starts anew from a rounded value at each sub-block, so its last bits depend on where
    // that lies. Host blocks that are multiples of the sub-block cut it at the same places.
    Rng rng = Rng::fromEnvironment();
    const Channels parts = noise(rng, 4, 8192);
    for (const int log2Factor : {0, 3}) {
        const Channels whole = renderMoving(log2Factor, parts, {8192});
        for (const int block : {1, 3, 64, 255, 257, 256, 512, 4096}) {
            const double worst = worstDifference(renderMoving(log2Factor, parts, {block}), whole);
            INFO("factor " << factors[log2Factor] << ", blocks of " << block << ", worst " << worst
                           << ", seed " << rng.seed());
            CHECK(worst <= (block % 256 == 0 ? 0.0 : 2e-5));
        }
    }
}

TEST_CASE("ShaperProcessor: a drive that moves is a gain that moves evenly in dB") {
    ShaperFixture shaper(1);
    shaper.setTransparent(0);
    const Channels ones = {std::vector<float>(20000, 0.001f)};
    shaper.render(ones);
    shaper.set(driveId, 24.0f);  // half of the range: the shortest ramp, 20 ms
    Channels expected(1);
    for (int n = 0; n < 20000; ++n)
        expected[0].push_back(static_cast<float>(
            0.001 * std::exp(std::min(24.0, 24.0 * n / 960.0) * 0.1151292546497023)));
    const Channels moved = shaper.render(ones);
    for (std::size_t n = 0; n < 20000; ++n)
        REQUIRE(moved[0][n] == doctest::Approx(expected[0][n]).epsilon(2e-6));
}

TEST_CASE("ShaperProcessor: the reported latency is the delay of low frequencies and of bypass") {
    Rng rng = Rng::fromEnvironment();
    for (const float rate : {44100.0f, 48000.0f, 88200.0f, 96000.0f, 192000.0f, 384000.0f})
        for (int log2Factor = 0; log2Factor < 4; ++log2Factor) {
            ShaperFixture shaper(1, rate);
            shaper.setTransparent(log2Factor);
            Channels impulse = {std::vector<float>(4000)};
            impulse[0][0] = 1.0f;
            const Channels response = shaper.render(impulse);
            double sum = 0.0, moment = 0.0;
            for (double n = 0.0; const float h : response[0]) {
                sum += static_cast<double>(h);
                moment += n++ * static_cast<double>(h);
            }
            INFO("rate " << rate << ", factor " << factors[log2Factor] << ", delay " << moment / sum
                         << ", reported " << shaper.latency() << ", seed " << rng.seed());
            CHECK(std::abs(moment / sum - shaper.latency()) < 0.51);

            shaper.set(bypassId, 1.0f);
            shaper.processor.reset();
            Channels input = noise(rng, 1, 3000);
            const Channels output = shaper.render(input);
            input[0].insert(input[0].begin(), static_cast<std::size_t>(shaper.latency()), 0.0f);
            input[0].resize(3000);
            CHECK(output == input);
        }
}

TEST_CASE("ShaperProcessor: channels don't hear each other, what isn't finite leaves no trace") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    Channels input = noise(rng, 2, 20000);
    input[0][100] = input[0][101] = input[0][700] = 0.0f;
    const Channels clean = ShaperFixture(2).render(input);
    CHECK(ShaperFixture(1).render({input[0]})[0] == clean[0]);
    input[0][100] = input[0][700] = NAN;
    input[0][101] = -INFINITY;
    CHECK(ShaperFixture(2).render(input) == clean);
    input[1].assign(20000, 0.0f);
    const Channels alone = ShaperFixture(2).render(input);
    CHECK(alone[0] == clean[0]);
    CHECK(alone[1] == input[1]);
}

}  // namespace cinder::test
