#include "distortion/curves/FunctionTable.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>

#include "distortion/curves/Spline.h"

using namespace cinder;

namespace {

struct Exponential final : FunctionTableFunction {
    double evaluate(double x) const override { return std::exp(x); }
};

struct Square final : FunctionTableFunction {
    double evaluate(double x) const override { return x * x; }
};

}  // namespace

TEST_CASE("FunctionTable: interpolates between its points and ends on the last one") {
    FunctionTable table;
    constexpr int sizes[][2] = {{-1, 2}, {3, 4}, {4096, 4096}, {4097, 8192}, {256, 256}};
    for (const auto& [requested, size] : sizes) {
        table.build(requested, Square(), 0.0, 1.0);
        CHECK(table.size == size);
        CHECK(table.lookup(1.0f) == 1.0f);
    }
    // A chord of a square lies above it by at most a quarter of the squared step.
    for (float x = 0.0f; x <= 1.0f; x += 0.001f) {
        const float above = table.lookup(x) - x * x;
        CHECK(above > -2e-7f);
        CHECK(above < 0.25f / (255.0f * 255.0f) + 2e-7f);
    }
    constexpr float infinity = std::numeric_limits<float>::infinity();
    for (const float x : {-0.5f, 1.5f, 1e30f, infinity, -infinity, infinity - infinity}) {
        CHECK(table.lookup(x) >= 0.0f);
        CHECK(table.lookup(x) <= 1.0f);
    }
    table.build(16, Square(), 3.0, 3.0);
    CHECK(table.lookup(3.0f) == 9.0f);

    DoubleFunctionTable exponential;  // below 0, ends in the other order
    exponential.build(8192, Exponential(), 0.0, -25.0);
    CHECK(exponential.lookup(0.0f) == 1.0);
    for (float x = -25.0f; x <= 0.0f; x += 0.01f)
        CHECK(exponential.lookup(x) ==
              doctest::Approx(std::exp(static_cast<double>(x))).epsilon(2e-6));
}

TEST_CASE("Spline: y of x(t) is y(t) within 1e-4, and outside that of the ends") {
    for (const SplinePoints& p : envelopeSplines) {
        const Spline spline(p);
        CHECK(std::fabs(spline.evaluate(-1.0) - p.y0) <= 1e-4);
        CHECK(std::fabs(spline.evaluate(2.0) - p.y3) <= 1e-4);
        for (double t = 0.0; t <= 1.0; t += 0.001) {
            const double s = 1.0 - t;
            const double x = 3.0 * s * s * t * p.x1 + 3.0 * s * t * t * p.x2 + t * t * t;
            const double y = s * s * s * p.y0 + 3.0 * s * s * t * p.y1 + 3.0 * s * t * t * p.y2 +
                             t * t * t * p.y3;
            INFO("t " << t);
            CHECK(std::fabs(spline.evaluate(x) - y) <= 1e-4);
        }
    }
}
