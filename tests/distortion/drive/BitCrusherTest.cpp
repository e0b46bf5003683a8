#include <doctest/doctest.h>

#include <cmath>

#include "distortion/drive/BitCrusher.h"
#include "modulation/sources/dynamics/SignalRig.h"
#include "support/Rng.h"

namespace cinder {
namespace {

using test::pullPieces;
using test::Rng;
using test::Signal;

std::vector<float> crush(const std::vector<float>& samples, const std::vector<float>& drives,
                         float bitDepth, bool limitOutput, const std::vector<int>& pieces) {
    wave::Environment environment;
    Signal input(&environment, samples);
    Signal drive(&environment, drives, drives.size() == 1);
    BitCrusher crusher(&environment);
    crusher.setInput(&input);
    crusher.drive.setSource(&drive);
    crusher.bitDepth = bitDepth;
    crusher.limitOutput = limitOutput;
    return pullPieces(environment, crusher, pieces);
}

/// The formulas, sample by sample.
std::vector<float> crushPlainly(const std::vector<float>& samples, const std::vector<float>& drives,
                                float bitDepth, bool limitOutput) {
    std::vector<float> out;
    int counter = -1;
    float held = 0.0f;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const float d = drives[std::min(i, drives.size() - 1)];
        if (counter == -1 || counter >= static_cast<int>(d * d * 500.0f)) {
            const double scale = std::exp2(23.0 - std::sqrt(static_cast<double>(d)) *
                                                      (24.0 - static_cast<double>(bitDepth)));
            const double y = std::floor(scale * static_cast<double>(samples[i]) + 0.5) / scale;
            const double limit = limitOutput ? 1.0 - static_cast<double>(d) * 0.75 : 1e9;
            held = static_cast<float>(std::copysign(std::min(std::abs(y), limit), y));
            counter = 0;
        }
        ++counter;
        out.push_back(held);
    }
    return out;
}

TEST_CASE("BitCrusher: the formulas, for drives that stand or move and any cut of the block") {
    Rng rng = Rng::fromEnvironment();
    const std::vector<float> samples = rng.noise(3000, 1.5f);
    std::vector<float> sweep;
    for (int i = 0; i < 3000; ++i)
        sweep.push_back(0.5f + 0.5f * std::sin(static_cast<float>(i) * 0.01f));
    for (const auto& drives : {std::vector<float>{0.0f}, {0.03f}, {0.05f}, {0.3f}, {1.0f}, sweep})
        for (const float bitDepth : {4.0f, 24.0f})
            for (const bool limitOutput : {false, true}) {
                INFO("seed " << rng.seed() << ", drive " << drives[0] << " of " << drives.size()
                             << ", bits " << bitDepth << ", limited " << limitOutput);
                const auto expected = crushPlainly(samples, drives, bitDepth, limitOutput);
                const auto out =
                    crush(samples, drives, bitDepth, limitOutput, rng.pieces(3000, 256));
                float worst = 0.0f;
                for (std::size_t i = 0; i < out.size(); ++i)
                    worst = std::max(worst, std::abs(out[i] - expected[i]));
                CHECK(worst < 3e-7f);
            }
}

TEST_CASE("BitCrusher: holds every sample as long as the drive says, and is clear at drive 0") {
    std::vector<float> ramp;
    for (int i = 0; i < 2000; ++i)
        ramp.push_back(static_cast<float>(i));
    for (const auto& [drive, hold] : {std::pair{1.0f, 500}, {0.5f, 125}, {0.1f, 5}, {0.0f, 1}}) {
        const auto out = crush(ramp, {drive}, 24.0f, false, test::evenPieces(2000, 96));
        bool isHeld = true;
        for (int i = 0; i < 2000; ++i)
            isHeld =
                isHeld && out[static_cast<std::size_t>(i)] == static_cast<float>(i / hold * hold);
        CHECK_MESSAGE(isHeld, "drive " << drive);
    }
    const std::vector<float> fine = {0x1p-23f, 0x1.8p-23f, 0x1p-25f, -0x1p-24f, 1.0f + 0x1p-23f};
    CHECK(crush(fine, {0.0f}, 24.0f, false, {5}) ==
          std::vector<float>{0x1p-23f, 0x1p-22f, 0.0f, 0.0f, 1.0f + 0x1p-23f});
}

}  // namespace
}  // namespace cinder
