#include "distortion/curves/FunctionTable.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>

#include "distortion/curves/Spline.h"

using namespace cinder;

namespace {

class Exponential final : public FunctionTableFunction {
public:
    double evaluate(double x) const override { return std::exp(x); }
};

class Square final : public FunctionTableFunction {
public:
    double evaluate(double x) const override { return x * x; }
};

}  // namespace

TEST_CASE("FunctionTable: interpolates between its points and ends on the last one") {
    FunctionTable table;
    table.build(256, Square(), 0.0, 1.0);
    CHECK(table.size == 256);
    CHECK(table.values.size() == 257);
    CHECK(table.lookup(0.0f) == 0.0f);
    CHECK(table.lookup(1.0f) == table.values[255]);
    CHECK(table.lookup(1.0f) == 1.0f);
    // A chord of a square lies above it by at most a quarter of the squared step.
    for (float x = 0.0f; x <= 1.0f; x += 0.001f) {
        const float above = table.lookup(x) - x * x;
        CHECK(above > -2e-7f);
        CHECK(above < 0.25f / (255.0f * 255.0f) + 2e-7f);
    }
}

TEST_CASE("FunctionTable: sizes, ranges below 0, ends in either order, doubles") {
    FunctionTable table;
    constexpr int sizes[][2] = {{-1, 2}, {2, 2}, {3, 4}, {4096, 4096}, {4097, 8192}};
    for (const auto& [requested, size] : sizes) {
        table.build(requested, Square(), 0.0, 1.0);
        CHECK(table.size == size);
        CHECK(table.lookup(1.0f) == 1.0f);
    }

    DoubleFunctionTable exponential;
    exponential.build(8192, Exponential(), 0.0, -25.0);
    CHECK(exponential.minimum == -25.0f);
    CHECK(exponential.offsetInteger == -8191);
    CHECK(exponential.values[8191] == 1.0);
    CHECK(exponential.values[8192] == 1.0);
    for (float x = -25.0f; x <= 0.0f; x += 0.01f)
        CHECK(exponential.lookup(x) ==
              doctest::Approx(std::exp(static_cast<double>(x))).epsilon(2e-6));
}

TEST_CASE("FunctionTable: a range of no width, and lookups that no table has an answer for") {
    FunctionTable table;
    table.build(16, Square(), 3.0, 3.0);
    CHECK(table.scale == 0.0f);
    CHECK(table.lookup(3.0f) == 9.0f);
    table.build(16, Square(), 0.0, 1.0);
    constexpr float infinity = std::numeric_limits<float>::infinity();
    for (const float x : {-0.5f, 1.5f, 1e30f, infinity, -infinity, infinity - infinity}) {
        CHECK(table.lookup(x) >= 0.0f);
        CHECK(table.lookup(x) <= 1.0f);
    }
}

TEST_CASE("Spline: y of x(t) is y(t) within 1e-4, for the envelope's curves") {
    for (const SplinePoints& p : envelopeSplines) {
        const Spline spline(p);
        CHECK(std::fabs(spline.evaluate(0.0) - p.y0) <= 1e-4);
        CHECK(std::fabs(spline.evaluate(1.0) - p.y3) <= 1e-4);
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

TEST_CASE("Spline: a straight line is one, and x outside 0 to 1 gives the end") {
    const Spline line({0.0, 1.0 / 3.0, 1.0 / 3.0, 2.0 / 3.0, 2.0 / 3.0, 1.0});
    CHECK(line.evaluate(0.5) == 0.5);
    CHECK(line.evaluate(0.3) == doctest::Approx(0.3).epsilon(1e-3));
    CHECK(line.evaluate(-1.0) == doctest::Approx(0.0).epsilon(1e-3));
    CHECK(line.evaluate(2.0) == doctest::Approx(1.0).epsilon(1e-3));
}
