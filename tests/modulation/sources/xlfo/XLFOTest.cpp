#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "modulation/sources/xlfo/XLFORig.h"

using namespace cinder;
using namespace cinder::test;

namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

double distance(double a, double b) {
    return std::abs(std::remainder(a - b, 1.0));
}

bool isWithin(const std::vector<float>& out, float limit) {
    return std::all_of(out.begin(), out.end(), [=](float y) { return std::abs(y) <= limit; });
}

}  // namespace

TEST_CASE("XLFO: keeps time over minutes") {
    XLFORig rig({.frequency = {7.3f}}, 44100.0f);
    constexpr int numSamples = 44100 * 120;
    rig.play(numSamples, 256);
    const double exact = static_cast<double>(7.3f) / 44100.0 * numSamples;
    CHECK(distance(rig.xlfo.getPhase(), exact) < 1e-12);
    CHECK(distance(rig.xlfo.getBasePhase(), exact) < 1e-12);
}

TEST_CASE("XLFO: a seed brings the same values back; without one, each has its own") {
    const auto playSeeded = [](bool isSeeded) {
        XLFORig rig({.frequency = {480.0f}});
        for (XLFO::Step& step : rig.xlfo.steps)
            step.random = true;
        if (isSeeded) rig.xlfo.seedRandom(1234);
        return rig.play(1000);
    };
    CHECK(playSeeded(true) == playSeeded(true));
    CHECK(playSeeded(false) != playSeeded(false));
}

TEST_CASE("XLFO: a change of balance keeps the place in its half, and the offset") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    XLFORig rig({.frequency = {777.0f}, .phaseOffset = {0.3f}});
    XLFO& xlfo = rig.xlfo;
    for (int i = 0; i < 2000; ++i) {
        rig.play(rng.integer(1, 50));
        const double before = xlfo.getPhase(), offset = before - xlfo.getBasePhase();
        const bool isInFirst = before < static_cast<double>(xlfo.balance.get());
        xlfo.balance.assign(static_cast<float>(i % 5 ? rng.real(0.0, 1.0) : 0.0001));
        CHECK((xlfo.getPhase() < static_cast<double>(xlfo.balance.get())) == isInFirst);
        CHECK(distance(xlfo.getPhase() - xlfo.getBasePhase(), offset) < 1e-12);
    }
}

TEST_CASE("XLFO: shows its first sample, or its highest step while it is fast") {
    XLFORig rig({.frequency = {2.0f}});
    rig.setValues({0.5f, -0.5f});
    CHECK(rig.xlfo.getSourceValue() == 0.5f);
    // It runs although nobody pulls it.
    rig.environment.beginBlock();
    rig.environment.render(256, 0);
    CHECK(rig.xlfo.getSourceValue() == 0.75f);
    CHECK(rig.xlfo.getStatus() == 0);
    CHECK(rig.xlfo.getPhase() > 0.01);

    XLFORig quick({.frequency = {10.1f}});
    quick.setValues({-0.5f, 0.2f});
    quick.play(64);
    CHECK(quick.xlfo.getStatus() == XLFO::fast);
    CHECK(quick.xlfo.getSourceValue() == doctest::Approx(0.6));
}

TEST_CASE("XLFO: nothing a control may carry stops it or takes it off the circle") {
    Rng rng = Rng::fromEnvironment();
    const std::vector<float> poison = {notANumber, infinity, -infinity, 1e30f,   -1e30f,
                                       -1e-17f,    1e-40f,   0.0f,      5000.0f, 1.0f,
                                       -1.0f,      100.0f,   -100.0f};
    const auto mixed = [&](double share) {
        std::vector<float> signal;
        for (int i = 0; i < 3000; ++i)
            signal.push_back(rng.real(0.0, 1.0) < share
                                 ? poison[static_cast<std::size_t>(rng.integer(0, 12))]
                                 : static_cast<float>(rng.real(-100.0, 5000.0)));
        return signal;
    };
    const auto survives = [&](const XLFOControls& controls) {
        XLFORig rig(controls, 44100.0f);
        rig.xlfo.balance.assign(0.0001f);
        for (XLFO::Step& step : rig.xlfo.steps) {
            step.value.assign(static_cast<float>(rng.real(-1.0, 1.0)));
            step.random = rng.integer(0, 1) == 1;
            step.glide.assign(static_cast<float>(rng.real(0.0, 1.0)));
            step.glideCurve = static_cast<GlideCurve>(rng.integer(0, 3));
        }
        const auto out = rig.play(3000, rng.integer(1, 256));
        CHECK(isWithin(out, 1.000001f));
        CHECK(rig.xlfo.getPhase() >= 0.0);
        CHECK(rig.xlfo.getPhase() < 1.0);
        CHECK(rig.xlfo.getBasePhase() < 1.0);
    };
    INFO("seed " << rng.seed());
    for (const float value : poison) {
        INFO("standing at " << value);
        survives({.frequency = {value}});
        survives({.frequency = {5000.0f}, .glide = {value}});
        survives({.frequency = {100.0f}, .phaseOffset = {value}});
    }
    for (const double share : {0.01, 0.5, 1.0})
        survives({mixed(share), mixed(share), mixed(share)});

    XLFORig rig({.frequency = {50.0f}});
    for (const int n : {-3, 0, 17, 1000}) {
        rig.xlfo.numSteps = n;
        CHECK(isWithin(rig.play(500), 1.0f));
    }
    rig.environment.setSampleRate(1e-30f);
    CHECK(isWithin(rig.play(500), 1.0f));

    // A glide too short for a float beside 1 stays between the two values.
    XLFORig slow({.frequency = {1.7f}}, 3.0e7f);
    slow.setValues({0.0f, 1.0f});
    CHECK(isWithin(slow.play(9'000'000, 256), 1.0f));
}
