#include <doctest/doctest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "LanesTestKernels.h"

using namespace cinder;

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float smallest = std::numeric_limits<float>::min();

using Kernels = test::LanesTestKernels;

// A function, its reference, the ends of its range, and the error allowed: in units of the last
// place of the result, which near 0 is that of 1e-30.
struct Row {
    const char* name;
    Kernels::Block Kernels::*kernel;
    double (*reference)(double);
    float from, to;
    double ulps;
};
constexpr Row rows[] = {
    {"arcTan", &Kernels::arcTan, std::atan, 0.0f, infinity, 3.0},
    {"sinOfQuarter", &Kernels::sinOfQuarter, std::sin, 0.0f, 1.5707964f, 1.5},
    {"log", &Kernels::log, std::log, smallest, 3.4028235e38f, 1.0},
    {"exp of positive", &Kernels::exp, std::exp, 0.0f, 88.37626f, 1.5},
    {"exp of negative", &Kernels::exp, std::exp, -0.0f, -87.3f, 1.5},
};

double worstUlps(const Row& row, std::uint32_t step, float& at) {
    std::vector<float> in;
    const auto last = std::bit_cast<std::uint32_t>(row.to);
    for (auto bits = std::bit_cast<std::uint32_t>(row.from); bits <= last; bits += step)
        in.push_back(std::bit_cast<float>(bits));
    in.push_back(row.to);
    std::vector<float> out(in.size());
    (test::lanesTestKernels.operator->()->*row.kernel)(in.data(), out.data(),
                                                       static_cast<int>(in.size()));
    double worst = 0.0;
    for (std::size_t i = 0; i < in.size(); ++i) {
        const double expected = row.reference(static_cast<double>(in[i]));
        const auto nearest = std::fmax(static_cast<float>(std::fabs(expected)), 1e-30f);
        const auto place = static_cast<double>(std::nextafter(nearest, infinity) - nearest);
        const double difference = std::fabs(static_cast<double>(out[i]) - expected);
        const double ulps = std::isnan(out[i]) ? 1e9 : difference / place;
        if (ulps > worst) {
            worst = ulps;
            at = in[i];
        }
    }
    return worst;
}

}  // namespace

TEST_CASE("LaneMath: within the stated error over the whole range, and an answer outside of it") {
    const std::vector<float> in = {0.0f, -1.0f, 1e-42f, notANumber, infinity, -infinity, 1e3f};
    std::vector<float> out(in.size());
    const int n = static_cast<int>(in.size());
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        for (const Row& row : rows) {
            float at = 0.0f;
            const double worst = worstUlps(row, 9973, at);
            INFO(std::string(row.name) << ", " << std::string(simd::nameOf(set)) << ", at " << at);
            CHECK(worst <= row.ulps);
        }
        test::lanesTestKernels->log(in.data(), out.data(), n);
        for (int i = 0; i < 4; ++i)
            CHECK(out[i] == doctest::Approx(std::log(static_cast<double>(smallest))));
        CHECK(out[4] == doctest::Approx(128.0 * std::log(2.0)));
        test::lanesTestKernels->exp(in.data(), out.data(), n);
        CHECK(out[4] == doctest::Approx(2.4e38).epsilon(0.01));
        CHECK(out[6] == out[4]);
        CHECK(out[5] == 0.0f);
        CHECK(std::isfinite(out[3]));
    }
}
