#include "cinder/shaper/ShaperProcessor.h"

#include "support/Rng.h"
#include "tools/shaper/ShaperFixture.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

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

/// Drive goes from 0 to 30 dB and back, Level the other way, while noise passes through.
Channels renderMoving(int log2Factor, const Channels& input, const std::vector<int>& blocks) {
    ShaperFixture shaper(static_cast<int>(input.size()));
    shaper.set(oversamplingId, static_cast<float>(log2Factor));
    Channels output(input.size());
    // Each part begins a host block, so that the controls move at the same samples for any cut.
    const auto part = input[0].size() / 4;
    for (std::size_t turn = 0; turn < 4; ++turn) {
        shaper.set(driveId, turn % 2 == 0 ? 0.0f : 30.0f);
        shaper.set(levelId, turn % 2 == 0 ? 0.0f : -24.0f);
        Channels piece;
        for (const auto& channel : input)
            piece.emplace_back(channel.begin() + static_cast<std::ptrdiff_t>(turn * part),
                               channel.begin() + static_cast<std::ptrdiff_t>((turn + 1) * part));
        const Channels rendered = shaper.render(piece, blocks);
        for (std::size_t channel = 0; channel < output.size(); ++channel)
            output[channel].insert(output[channel].end(), rendered[channel].begin(),
                                   rendered[channel].end());
    }
    return output;
}

}  // namespace

TEST_CASE("ShaperProcessor: any cut into host blocks gives the same bits, for every curve") {
    Rng rng = Rng::fromEnvironment();
    for (int log2Factor = 0; log2Factor < 4; ++log2Factor)
        for (int curve = 0; curve < numCurves; ++curve) {
            const int numChannels = 1 + curve % 2;
            const Channels input = noise(rng, numChannels, 5000);
            const auto render = [&](const std::vector<int>& blocks) {
                ShaperFixture shaper(numChannels);
                shaper.set(oversamplingId, static_cast<float>(log2Factor));
                shaper.set(curveId, static_cast<float>(curve));
                return shaper.render(input, blocks);
            };
            const Channels whole = render({5000});
            for (const auto& blocks : std::vector<std::vector<int>>{
                     {1}, {3}, {64}, {255}, {256}, {257}, {4096}, rng.pieces(5000, 600)}) {
                INFO("factor " << factors[log2Factor] << ", curve " << curveNames[curve]
                               << ", blocks of " << blocks[0] << ", seed " << rng.seed());
                REQUIRE(render(blocks) == whole);
            }
        }
}

TEST_CASE("ShaperProcessor: while controls move, the cut shows in no more than their rounding") {
    // A ramp starts anew from a rounded value at each sub-block, so its last bits depend on where
    // that lies. Host blocks that are multiples of the sub-block cut it at the same places.
    Rng rng = Rng::fromEnvironment();
    const Channels input = noise(rng, 2, 4 * 8192);
    for (const int log2Factor : {0, 3}) {
        const Channels whole = renderMoving(log2Factor, input, {8192});
        for (const int block : {1, 3, 64, 255, 257}) {
            const double worst = worstDifference(renderMoving(log2Factor, input, {block}), whole);
            INFO("factor " << factors[log2Factor] << ", blocks of " << block << ", worst " << worst
                           << ", seed " << rng.seed());
            CHECK(worst < 2e-5);
        }
        for (const int block : {256, 512, 4096})
            CHECK(renderMoving(log2Factor, input, {block}) == whole);
    }
}

TEST_CASE("ShaperProcessor: a drive that moves is a gain that moves evenly in dB") {
    ShaperFixture shaper(1);
    shaper.setTransparent(0);
    const Channels ones = {std::vector<float>(20000, 0.001f)};
    shaper.render(ones);
    shaper.set(driveId, 24.0f);  // half of the range: the shortest ramp, 20 ms
    const Channels moved = shaper.render(ones);
    double worst = 0.0;
    for (int n = 0; n < 20000; ++n) {
        const double gainDb = std::min(24.0, 24.0 * n / 960.0);
        const double expected = 0.001 * std::exp(gainDb * 0.1151292546497023);
        worst = std::max(
            worst,
            std::abs(static_cast<double>(moved[0][static_cast<std::size_t>(n)]) / expected - 1.0));
    }
    CHECK(worst < 2e-6);
}

TEST_CASE("ShaperProcessor: the reported latency is the delay of low frequencies") {
    for (const float rate : {44100.0f, 48000.0f, 88200.0f, 96000.0f, 192000.0f, 384000.0f})
        for (int log2Factor = 0; log2Factor < 4; ++log2Factor) {
            ShaperFixture shaper(1, rate);
            shaper.setTransparent(log2Factor);
            const double hz = 50.0;
            const int length = static_cast<int>(rate / 5.0f);
            Channels input(1);
            for (int n = 0; n < length; ++n)
                input[0].push_back(static_cast<float>(
                    0.5 * std::sin(2.0 * std::numbers::pi * hz * n / static_cast<double>(rate))));
            const Channels output = shaper.render(input);
            // The delay that turns the input's phase into the output's, over whole periods.
            double inPhase = 0.0, behind = 0.0;
            const int period = static_cast<int>(static_cast<double>(rate) / hz);
            for (int n = length - 5 * period; n < length; ++n) {
                const double turns = hz * n / static_cast<double>(rate);
                const auto y = static_cast<double>(output[0][static_cast<std::size_t>(n)]);
                inPhase += y * std::sin(2.0 * std::numbers::pi * turns);
                behind -= y * std::cos(2.0 * std::numbers::pi * turns);
            }
            const double delay = std::atan2(behind, inPhase) * static_cast<double>(rate) /
                                 (2.0 * std::numbers::pi * hz);
            INFO("rate " << rate << ", factor " << factors[log2Factor] << ", delay " << delay
                         << ", reported " << shaper.latency());
            CHECK(std::abs(delay - shaper.latency()) < 0.51);
            if (log2Factor == 0) CHECK(output == input);
        }
}

TEST_CASE("ShaperProcessor: bypassed, the input comes out at the reported latency, bit by bit") {
    Rng rng = Rng::fromEnvironment();
    for (int log2Factor = 0; log2Factor < 4; ++log2Factor) {
        INFO("factor " << factors[log2Factor] << ", seed " << rng.seed());
        ShaperFixture shaper(2);
        shaper.set(oversamplingId, static_cast<float>(log2Factor));
        shaper.set(bypassId, 1.0f);
        shaper.processor.reset();
        const Channels input = noise(rng, 2, 3000);
        const Channels output = shaper.render(input);
        const auto latency = static_cast<std::ptrdiff_t>(shaper.latency());
        for (std::size_t channel = 0; channel < 2; ++channel) {
            CHECK(std::all_of(output[channel].begin(), output[channel].begin() + latency,
                              [](float sample) { return sample == 0.0f; }));
            CHECK(std::equal(output[channel].begin() + latency, output[channel].end(),
                             input[channel].begin()));
        }
    }
}

TEST_CASE("ShaperProcessor: channels don't hear each other") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    Channels input = noise(rng, 2, 4000);
    ShaperFixture both(2), leftOnly(2), mono(1);
    const Channels together = both.render(input);
    CHECK(mono.render({input[0]})[0] == together[0]);
    input[1].assign(4000, 0.0f);
    const Channels alone = leftOnly.render(input);
    CHECK(alone[0] == together[0]);
    CHECK(alone[1] == input[1]);
}

TEST_CASE("ShaperProcessor: reset forgets the past") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const Channels input = noise(rng, 2, 2000);
    ShaperFixture shaper(2);
    const Channels first = shaper.render(input);
    CHECK(shaper.render(input) != first);
    shaper.processor.reset();
    CHECK(shaper.render(input) == first);
}

TEST_CASE("ShaperProcessor: what isn't finite leaves no trace") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    Channels input = noise(rng, 2, 20000);
    Channels poisoned = input;
    for (const std::size_t n : {100u, 101u, 700u}) {
        input[0][n] = 0.0f;
        poisoned[0][n] = n == 101 ? -INFINITY : NAN;
    }
    ShaperFixture clean(2), struck(2);
    CHECK(struck.render(poisoned) == clean.render(input));
}

}  // namespace cinder::test
