#include "distortion/curves/Clip.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

using namespace cinder;

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr double pi = 3.14159265358979323846;

// The curves as they are defined, step by step, each in its textbook form.
double defined(double x, int curve, double power, double negativeScale) {
    const double k = x > 0.0 ? 1.0 : negativeScale;
    const double sign = x > 0.0 ? 1.0 : x < 0.0 ? -1.0 : 0.0;
    const double u = sign * x * k;
    const double b = std::pow(u, power);
    const double m = std::min(b, 1.0);
    const double s = sign * b;
    const auto tubeOf = [](double v) {
        const double t = v + 0.032847;
        if (v < -1.754818) return -1.175451;
        if (v < -0.08905) return (std::pow(1.0 + t, 12) + t / 3.0 - 1.0) * 0.75 - 0.01;
        return v < 0.320018 ? 3.9375 * v - 6.153 * v * v : 0.62993276;
    };
    const double f = std::max(s * 0.04 + 0.5, 0.0);
    const double g = std::clamp((f * f - 0.25) * 2.4038448, -1.0, 1.0);
    const double curves[numCurves] = {
        std::atan(b * pi / 2.0) * 2.0 / pi,
        2.0 / (1.0 + std::exp(-b)) - 1.0,
        b / (b + 1.0),
        b / std::sqrt(std::pow(u, 2.0 * power) + 1.0),
        std::tanh(b),
        b,
        std::sin(m * pi / 2.0),
        2.0 * m - m * m,
        m * (1.5 - 0.5 * m * m),
        1.3333334 * m - 0.33333334 * std::pow(m, 4),
        m * (1.25 - 0.25 * std::pow(m, 4)),
        sign * tubeOf(s),
        (15.0 * g - 5.0 * g * g * g) * sign,
        2.0 * m - m * m,
    };
    const double y = std::pow(curves[curve], 1.0 / power) / k;
    return curve == rectifyCurve ? y : y * sign;
}

}  // namespace

TEST_CASE("clip: every curve is its definition, for any power and negative scale") {
    // On both sides of where the pieces of the tube meet, then everywhere.
    std::vector<float> samples = {-1.754819f, -1.754817f, -0.089051f,
                                  -0.089049f, 0.320017f,  0.320019f};
    for (float x = 1e-3f; std::fabs(x) < 50.0f; x *= -1.035f)
        samples.push_back(x);
    for (int curve = 0; curve < numCurves; ++curve)
        for (const double power : {1.0, double{0.8f}, 2.0})
            for (const double scale : {1.0, 0.5, 3.0})
                for (const float x : samples) {
                    INFO(std::string(curveNames[curve])
                         << " of " << x << ", power " << power << ", negative scale " << scale);
                    const float y =
                        clip(x, curve, static_cast<float>(power), static_cast<float>(scale));
                    REQUIRE(static_cast<double>(y) ==
                            doctest::Approx(defined(static_cast<double>(x), curve, power, scale))
                                .epsilon(2e-7));
                }
}

TEST_CASE("clip: 0, next to 0, NaN and infinity, and numbers without a curve") {
    for (int curve = -1; curve <= 15; ++curve) {
        INFO("curve " << curve);
        for (const float power : {1.0f, 0.8f, 20.0f}) {
            for (const float none : {0.0f, -0.0f, notANumber})
                CHECK(clip(none, curve, power, 0.5f) == 0.0f);
            CHECK(clip(-1.0f, curve, power, 0.0f) == 0.0f);
            CHECK(!std::isnan(clip(infinity, curve, power, 0.5f)));
            CHECK(!std::isnan(clip(-3e38f, curve, power, 0.5f)));
        }
        for (const float sign : {1.0f, -1.0f})  // a straight line
            CHECK(clip(sign * 1e-30f, curve, 1.0f, 0.5f) / clip(sign * 1e-10f, curve, 1.0f, 0.5f) *
                      1e20f ==
                  doctest::Approx(1.0f).epsilon(1e-6));
        if (curve < 0 || curve >= numCurves || curve == noCurve) {
            CHECK(clip(-infinity, curve, 0.8f, 0.5f) == -infinity);
        } else if (curve != tubeCurve && curve != softFoldCurve) {
            CHECK(clip(infinity, curve, 20.0f, 0.5f) == 1.0f);
            CHECK(clip(-infinity, curve, 20.0f, 0.5f) == (curve == rectifyCurve ? 2.0f : -2.0f));
        }
    }
    CHECK(clip(0.3f, 14, 0.8f, 0.5f) == 0.3f);
    CHECK(clip(infinity, tubeCurve, 1.0f, 1.0f) == 0.62993276f);
    CHECK(clip(-infinity, tubeCurve, 1.0f, 1.0f) == -1.175451f);
    CHECK(clip(infinity, softFoldCurve, 1.0f, 1.0f) == 10.0f);
    CHECK(clip(-infinity, softFoldCurve, 1.0f, 1.0f) == doctest::Approx(-7.92922));
}
