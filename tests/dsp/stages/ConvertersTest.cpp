#include <doctest/doctest.h>

#include <cmath>

#include "dsp/stages/LevelPanConverter.h"
#include "dsp/stages/MidSideConverter.h"
#include "dsp/stages/ValueConverters.h"
#include "support/Rng.h"
#include "support/StageRig.h"

namespace cinder {
namespace {

using test::play;
using test::SignalSource;

TEST_CASE("LevelPanConverter: either end silences one channel, the middle hands on the level") {
    const struct {
        float pan;
        bool invert;
        float left, right;
    } rows[] = {{0.0f, false, 0.8f, 0.8f},  {1.0f, false, 0.0f, 0.8f},
                {-1.0f, false, 0.8f, 0.0f}, {0.25f, false, 0.6f, 0.8f},
                {0.0f, true, -0.8f, -0.8f}, {-0.5f, true, -0.8f, -0.4f}};
    for (const auto& row : rows) {
        wave::Environment environment;
        LevelPanConverter converter(&environment);
        converter.invert = row.invert;
        converter.level.assign(0.8f);
        converter.pan.assign(row.pan);
        environment.beginBlock();
        INFO("pan " << row.pan << ", inverted " << row.invert);
        CHECK((*converter.getOutput(0)->pull(8))[7] == doctest::Approx(row.left));
        CHECK((*converter.getOutput(1)->pull(8))[7] == doctest::Approx(row.right));
        CHECK(converter.getOutput(0)->isConstant());
    }
}

/// The gain control told in double and in the order of its definition.
double gainOfControl(double x) {
    const double v = (x + 1.0) * 0.5;
    return v < 0.2 ? v * v * 2.0794094 : std::pow(10.0, ((v - 0.2) * 72.0 - 21.6) / 20.0);
}

TEST_CASE("GainLevelConverter: the law over the whole range, monotone, and exactly 1 at 0") {
    wave::Environment environment;
    std::vector<float> controls;
    for (int i = 0; i <= 2000; ++i)
        controls.push_back(static_cast<float>(i - 1000) * 0.001f);
    SignalSource source(&environment, controls);
    GainLevelConverter converter(&environment);
    converter.setInput(&source);
    const std::vector<float> gains = play(environment, converter, 2001);
    for (std::size_t i = 0; i < gains.size(); ++i) {
        INFO("control " << controls[i]);
        CHECK(static_cast<double>(gains[i]) ==
              doctest::Approx(gainOfControl(static_cast<double>(controls[i]))).epsilon(2e-6));
        if (i > 0) CHECK(gains[i] > gains[i - 1]);
    }
    CHECK(gains[1000] == 1.0f);
    CHECK(gains[0] == 0.0f);
}

TEST_CASE("DBConverter: there and back, the floor, and a constant converted once") {
    using enum DBConverter::Conversion;
    const struct {
        DBConverter::Conversion conversion;
        float in, out;
    } rows[] = {{ToDecibels, -0.1f, -20.0f},   {ToDecibels, 0.0f, -180.0f},
                {ToDecibels, 1e-10f, -180.0f}, {ToGain, -20.0f, 0.1f},
                {LossToDecibels, 0.9f, 20.0f}, {LossToDecibels, 1.0f, 180.0f},
                {DecibelsToLoss, 20.0f, 0.9f}};
    for (const auto& row : rows)
        for (const bool moves : {false, true}) {
            wave::Environment environment;
            SignalSource constant(&environment, row.in);
            SignalSource moving(&environment, std::vector<float>{row.in, 0.5f});
            DBConverter converter(&environment);
            converter.conversion = row.conversion;
            converter.setInput(moves ? &moving : &constant);
            INFO("conversion " << static_cast<int>(row.conversion) << " of " << row.in);
            CHECK(play(environment, converter, 16)[moves ? 0 : 15] ==
                  doctest::Approx(row.out).epsilon(1e-5));
            CHECK(converter.isConstant() == !moves);
        }
}

TEST_CASE("MidSideConverter: encoded and decoded, a signal is itself to the last bits") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const std::vector<float> l = rng.noise(256), r = rng.noise(256);
    wave::Environment environment;
    SignalSource left(&environment, l), right(&environment, r);
    MidSideConverter encoder(&environment), decoder(&environment);
    encoder.conversion = MidSideConverter::Conversion::Encode;
    decoder.conversion = MidSideConverter::Conversion::Decode;
    encoder.setInput(0, &left);
    encoder.setInput(1, &right);
    for (int i : {0, 1})
        decoder.setInput(i, encoder.getOutput(i));
    environment.beginBlock();
    const float* const outL = decoder.getOutput(0)->pull(256)->data();
    const float* const outR = decoder.getOutput(1)->pull(256)->data();
    const float* const side = encoder.getOutput(1)->getOutput()->data();
    for (std::size_t i = 0; i < 256; ++i) {
        CHECK(side[i] == (r[i] - l[i]) * 0.5f);
        CHECK(std::abs(outL[i] - l[i]) <= 1.2e-7f);
        CHECK(std::abs(outR[i] - r[i]) <= 1.2e-7f);
    }
}

}  // namespace
}  // namespace cinder
