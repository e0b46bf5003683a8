#include <doctest/doctest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "LanesTestKernels.h"
#include "support/Rng.h"

using namespace cinder;

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

using Values = std::array<float, 16>;

// Every pairing of the special values with noise and with one another comes up over the rounds.
Values specialAndNoise(test::Rng& rng) {
    constexpr float special[] = {0.0f, -0.0f, 1.0f, -1.0f, infinity, -infinity, nan, 1e-40f, 3e38f};
    Values values;
    for (float& x : values)
        x = rng.integer(0, 1) ? special[rng.integer(0, std::size(special) - 1)]
                              : static_cast<float>(rng.real(-100.0, 100.0));
    return values;
}

// NaN is NaN, whatever its bits; 0 and -0 are told apart.
bool same(float a, float b) {
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

using Kernels = test::LanesTestKernels;

struct Row {
    const char* name;
    Kernels::Floats Kernels::*lanes;
    float (*scalar)(float a, float b, float c);
};
constexpr Row rows[] = {
    {"mulAdd", &Kernels::mulAdd,
     [](float a, float b, float c) {
         return test::lanesTestKernels->hasFusedProduct ? std::fma(a, b, c) : a * b + c;
     }},
    {"sqrt", &Kernels::squareRoot, [](float a, float, float) { return std::sqrt(std::fabs(a)); }},
    {"min", &Kernels::smaller, [](float a, float b, float) { return a < b ? a : b; }},
    {"max", &Kernels::larger, [](float a, float b, float) { return a > b ? a : b; }},
    {"select", &Kernels::chosen, [](float a, float b, float c) { return a < b ? 0.0f : c; }},
    {"withSignOf", &Kernels::copiedSign,
     [](float a, float b, float) { return std::copysign(a, b); }},
    {"truncate", &Kernels::truncated,
     [](float a, float, float) {
         return a > -1e6f ? std::trunc(std::fmin(a, 1e6f)) + 0.0f : -1e6f;  // + 0: no -0
     }},
    {"broadcast", &Kernels::minusZero, [](float, float, float) { return -0.0f; }},
};

}  // namespace

TEST_CASE("Lanes: every operation is its scalar twin, at every width and in every set") {
    test::Rng rng = test::Rng::fromEnvironment();
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        for (int round = 0; round < 200 * static_cast<int>(std::size(rows)); ++round) {
            const Row& row = rows[round % static_cast<int>(std::size(rows))];
            const Values a = specialAndNoise(rng), b = specialAndNoise(rng),
                         c = specialAndNoise(rng);
            std::array<float, 48> out{};
            (test::lanesTestKernels.operator->()->*row.lanes)(a.data(), b.data(), c.data(),
                                                              out.data());
            for (int i = 0; i < 48; ++i) {
                const float x = a[i % 16], y = b[i % 16], z = c[i % 16];
                INFO(std::string(row.name)
                     << " of " << x << ", " << y << ", " << z << ", width " << (4 << i / 16)
                     << ", set " << std::string(simd::nameOf(set)) << ", seed " << rng.seed());
                REQUIRE(same(out[i], row.scalar(x, y, z)));
            }
        }
    }
}

TEST_CASE("Lanes: doubles, and the order of lanes") {
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        INFO(std::string(simd::nameOf(set)));
        std::array<double, 16> a, b, c;
        Values counting, negative;
        for (int i = 0; i < 16; ++i) {
            a[i] = 1.0 + i * 1e-9;
            b[i] = 1.0 - i * 1e-9;
            c[i] = -1.0;
            counting[i] = static_cast<float>(i);
            negative[i] = static_cast<float>(-i);
        }
        std::array<double, 48> products{};
        test::lanesTestKernels->mulAddDouble(a.data(), b.data(), c.data(), products.data());
        for (int i = 0; i < 48; ++i) {
            const double x = a[i % 16], y = b[i % 16];
            CHECK(products[i] ==
                  (test::lanesTestKernels->hasFusedProduct ? std::fma(x, y, -1.0) : x * y - 1.0));
        }
        std::array<float, 32> out{};
        test::lanesTestKernels->interleaved(counting.data(), negative.data(), nullptr, out.data());
        for (int i = 0; i < 32; ++i)
            CHECK(out[i] == (i % 2 == 0 ? counting[i / 2] : negative[i / 2]));
    }
}
