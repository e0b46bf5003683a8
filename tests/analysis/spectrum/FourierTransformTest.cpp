#include "analysis/spectrum/FourierTransform.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <complex>
#include <limits>
#include <numbers>
#include <vector>

#include "support/Rng.h"
#include "support/Spectrum.h"

namespace cinder {
namespace {

using Line = std::complex<double>;

/// The definition, term by term.
Line directLine(const std::vector<float>& x, int k) {
    Line sum = 0.0;
    const int size = static_cast<int>(x.size());
    for (int n = 0; n < size; ++n)
        sum += static_cast<double>(x[n]) *
               std::polar(1.0, -2.0 * std::numbers::pi * ((n * k) % size) / size);
    return sum;
}

Line lineOf(const FourierTransform& transform, int size, int k) {
    const float* const x = transform.getResult();
    const bool isReal = k == 0 || k == size / 2;
    return {static_cast<double>(x[k]), isReal ? 0.0 : static_cast<double>(x[size / 2 + k])};
}

void load(FourierTransform& transform, const std::vector<float>& x) {
    std::copy(x.begin(), x.end(), transform.begin());
}

TEST_CASE("FourierTransform: agrees with the definition") {
    test::Rng rng = test::Rng::fromEnvironment();
    for (int size = 4; size <= 65536; size *= 2) {
        INFO("size " << size << ", seed " << rng.seed());
        const FourierPlan plan(size);
        FourierTransform transform(&plan);
        CHECK(lineOf(transform, size, 1) == 0.0);
        const std::vector<float> x = rng.noise(size);
        load(transform, x);
        CHECK(transform.run(plan.getTotalUnits()));
        std::vector<Line> expected(x.begin(), x.end());
        test::fourierTransform(expected);
        double worst = 0.0;
        for (int k = 0; k <= size / 2; ++k) {
            if (size <= 512) expected[k] = directLine(x, k);
            worst = std::max(worst, std::abs(lineOf(transform, size, k) - expected[k]));
        }
        // Noise of +-1 has lines of about sqrt(N / 3).
        CHECK(worst < 1e-6 * std::sqrt(size));
    }
}

TEST_CASE("FourierTransform: can be stopped anywhere, for the work it was told to do") {
    test::Rng rng = test::Rng::fromEnvironment();
    for (int size : {4, 8, 16, 128, 2048}) {
        const FourierPlan plan(size);
        const std::vector<float> x = rng.noise(size);
        FourierTransform whole(&plan), cut(&plan);
        load(whole, x);
        whole.run(std::numeric_limits<int>::max());
        for (int longest : {1, 100, 3 * size}) {
            INFO("size " << size << ", pieces up to " << longest << ", seed " << rng.seed());
            load(cut, x);
            while (!cut.run(rng.integer(1, longest)))
                CHECK_FALSE(cut.isFinished());
            CHECK(std::equal(whole.getResult(), whole.getResult() + size, cut.getResult()));
        }
    }
    // Passes 1 and 2 in one for 3 N, seven for N each, the tenth and the eleventh for 2 N each.
    const FourierPlan plan(2048);
    CHECK(plan.getTotalUnits() == 14 * 2048);
    FourierTransform transform(&plan);
    transform.begin();
    CHECK_FALSE(transform.run(14 * 2048 - 16));
    CHECK(transform.run(1));
}

TEST_CASE("FourierPlan: any size becomes one that works") {
    for (const auto& [wanted, size] : {std::pair{std::numeric_limits<int>::min(), 4},
                                       {0, 4},
                                       {5, 8},
                                       {2048, 2048},
                                       {2049, 4096},
                                       {std::numeric_limits<int>::max(), 1 << 20}})
        CHECK(FourierPlan::sizeFor(wanted) == size);
}

}  // namespace
}  // namespace cinder
