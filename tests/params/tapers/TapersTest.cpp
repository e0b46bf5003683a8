#include "params/tapers/Tapers.h"

#include <doctest/doctest.h>

#include <cmath>
#include <string>

using namespace cinder;

TEST_CASE("PiecewiseCurve: goes through its points, and stays where it ends") {
    for (const CurvePoint& point : timeCurve.points) {
        CHECK(timeCurve.at(point.x) == point.y);
        CHECK(timeCurve.inverse(point.y) == point.x);
    }
    CHECK(frequencyCurve.at(-1.0f) == 0.0f);
    CHECK(frequencyCurve.at(0.99f) == 1.0f);
    CHECK(frequencyCurve.inverse(1.5f) == 0.98f);
    CHECK(levelCurve.oddAt(-0.5f) == -0.16f);
    CHECK(levelCurve.oddInverse(-3.0f) == -1.0f);
    CHECK(levelCurve.at(std::nanf("")) == 0.0f);
    CHECK(levelCurve.at(0.35f) == doctest::Approx(0.05 + 0.4 * 0.11));
}

TEST_CASE("Tapers: what goes there comes back") {
    struct Case {
        const char* name;
        const Taper* taper;
        float from, to, tolerance;
    };
    constexpr Case cases[] = {
        {"gain", &tapers::gain, -36.0f, 36.0f, 2e-5f},
        {"ratio", &tapers::ratio, 0.001f, 1.0f, 1e-6f},
        {"feedback", &tapers::feedback, -1.0f, 1.0f, 1e-6f},
        {"threshold", &tapers::threshold, 0.01f, 1.0f, 1e-6f},
        {"frequency", &tapers::frequency, 0.0f, 0.98f, 1e-6f},
        {"time", &tapers::time, 0.0f, 1.0f, 1e-6f},
        {"octaves", &tapers::octaves, -1.0f, 1.0f, 1e-6f},
        {"percent", &tapers::percent, -1.0f, 1.0f, 1e-6f},
        {"level", &tapers::level, -0.99f, 1.0f, 2e-6f},
    };
    const auto through = [](Taper::Function function, float x) {
        return function ? function(x) : x;
    };
    for (const Case& row : cases)
        for (int i = 0; i <= 1000; ++i) {
            const float x = row.from + (row.to - row.from) * static_cast<float>(i) / 1000.0f;
            INFO(std::string(row.name) << " at " << x);
            const float target = through(row.taper->toTarget, x);
            const float shown = through(row.taper->toDisplay, target);
            const float back = through(row.taper->fromDisplay, shown);
            CHECK(std::fabs(through(row.taper->fromTarget, back) - x) < row.tolerance);
        }
}

TEST_CASE("Tapers: the level of a band at its marks") {
    CHECK(tapers::level.toDisplay(0.0f) == doctest::Approx(0.0).epsilon(1e-5));
    CHECK(tapers::level.toDisplay(1.0f) == doctest::Approx(36.0));
    CHECK(tapers::level.toDisplay(-1.0f) == -180.0f);
    // The parabola meets the straight part.
    const float knee = -0.6f;
    CHECK(tapers::level.toDisplay(knee + 1e-4f) - tapers::level.toDisplay(knee - 1e-4f) < 0.02f);
}
