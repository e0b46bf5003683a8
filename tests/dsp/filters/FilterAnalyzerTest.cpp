#include "dsp/filters/FilterAnalyzer.h"

#include <doctest/doctest.h>

#include <cmath>

#include "support/StageRig.h"

namespace cinder {
namespace {

using test::play;
using test::SignalSource;

TEST_CASE("FilterAnalyzer: rises to 1 at its threshold, with its time constant, and falls back") {
    wave::Environment environment;
    std::vector<float> step(44100, 0.01f);
    step.resize(88200);
    SignalSource level(&environment, step);
    FilterAnalyzer analyzer(&environment, 20.0f, 0.005f);
    analyzer.setInput(&level);
    const std::vector<float> out = play(environment, analyzer, 88200);

    // 1 - exp(-t / 20 ms) passes a half after 13.86 ms, 611 samples.
    const auto reached = std::find(out.begin(), out.end(), 1.0f) - out.begin();
    CHECK(std::abs(static_cast<int>(reached) - 611) < 3);
    CHECK(out[100] == doctest::Approx(2.0 * (1.0 - std::exp(-101.0 / 882.0))).epsilon(1e-3));
    CHECK(out[44000] == 1.0f);
    CHECK(out[44100 + 605] == 1.0f);
    CHECK(out[44100 + 617] < 1.0f);
    CHECK(out[44100 + 882 * 10] == doctest::Approx(2.0 * std::exp(-10.0)).epsilon(2e-2));

    analyzer.threshold = 0.02f;
    analyzer.attackTime = 0.0f;
    CHECK(play(environment, analyzer, 2) == std::vector<float>(2, 0.5f));
    analyzer.reset();
    analyzer.attackTime = 20.0f;
    CHECK(play(environment, analyzer, 1)[0] < 0.001f);
}

}  // namespace
}  // namespace cinder
