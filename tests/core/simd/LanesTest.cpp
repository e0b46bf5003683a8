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

void checkAgainst(const char* name, auto kernel, auto scalar, test::Rng& rng) {
    for (int round = 0; round < 200; ++round) {
        const Values a = specialAndNoise(rng), b = specialAndNoise(rng), c = specialAndNoise(rng);
        std::array<float, 48> out{};
        kernel(a.data(), b.data(), c.data(), out.data());
        for (int i = 0; i < 48; ++i) {
            const float expected = scalar(a[i % 16], b[i % 16], c[i % 16]);
            INFO(std::string(name)
                 << " of " << a[i % 16] << ", " << b[i % 16] << ", " << c[i % 16] << ", width "
                 << (4 << i / 16) << ": " << out[i] << ", not " << expected);
            REQUIRE(same(out[i], expected));
        }
    }
}

}  // namespace

TEST_CASE("Lanes: every operation is its scalar twin, at every width and in every set") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        INFO(std::string(simd::nameOf(set)));
        const bool fused = test::lanesTestKernels->hasFusedProduct;
        const auto product = [&](float a, float b, float c) {
            return fused ? std::fma(a, b, c) : a * b + c;
        };
        checkAgainst("mulAdd", test::lanesTestKernels->mulAdd, product, rng);
        const auto root = [](float a, float, float) { return std::sqrt(std::fabs(a)); };
        checkAgainst("sqrt", test::lanesTestKernels->squareRoot, root, rng);
        const auto smaller = [](float a, float b, float) { return a < b ? a : b; };
        checkAgainst("min", test::lanesTestKernels->smaller, smaller, rng);
        const auto larger = [](float a, float b, float) { return a > b ? a : b; };
        checkAgainst("max", test::lanesTestKernels->larger, larger, rng);
        const auto chosen = [](float a, float b, float c) { return a < b ? 0.0f : c; };
        checkAgainst("select", test::lanesTestKernels->chosen, chosen, rng);
        const auto sign = [](float a, float b, float) { return std::copysign(a, b); };
        checkAgainst("withSignOf", test::lanesTestKernels->copiedSign, sign, rng);
        const auto whole = [](float a, float, float) {
            if (!(a > -1e6f)) return -1e6f;
            return static_cast<float>(static_cast<int>(std::fmin(a, 1e6f)));
        };
        checkAgainst("truncate", test::lanesTestKernels->truncated, whole, rng);
    }
}

TEST_CASE("Lanes: doubles, broadcast of -0, and order of lanes") {
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        INFO(std::string(simd::nameOf(set)));
        std::array<double, 16> a, b, c;
        for (int i = 0; i < 16; ++i) {
            a[i] = 1.0 + i * 1e-9;
            b[i] = 1.0 - i * 1e-9;
            c[i] = -1.0;
        }
        std::array<double, 48> products{};
        test::lanesTestKernels->mulAddDouble(a.data(), b.data(), c.data(), products.data());
        for (int i = 0; i < 48; ++i) {
            const double x = a[i % 16], y = b[i % 16];
            CHECK(products[i] ==
                  (test::lanesTestKernels->hasFusedProduct ? std::fma(x, y, -1.0) : x * y - 1.0));
        }

        Values minusZero, counting, negative;
        minusZero.fill(-0.0f);
        for (int i = 0; i < 16; ++i) {
            counting[i] = static_cast<float>(i);
            negative[i] = static_cast<float>(-i);
        }
        std::array<float, 48> out{};
        test::lanesTestKernels->broadcast(minusZero.data(), minusZero.data(), minusZero.data(),
                                          out.data());
        for (const float x : out)
            CHECK(same(x, -0.0f));
        test::lanesTestKernels->interleaved(counting.data(), negative.data(), nullptr, out.data());
        for (int i = 0; i < 32; ++i)
            CHECK(out[i] == (i % 2 == 0 ? counting[i / 2] : negative[i / 2]));
    }
}
