#include "dsp/sr/EllipticDesign.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

using namespace cinder;

namespace {

using std::numbers::pi;

// An edge is a float: the last printed digit depends on its rounding.
const struct {
    int order;
    float edge;
    std::vector<double> coefficients;
    double stopbandPeakDb;
} published[] = {
    {13,
     1.4891149f,
     {0.08481530, 0.28906272, 0.51689161, 0.70642811, 0.84587664, 0.95155773},
     -65.6},
    {11, 1.3948672f, {0.07778222, 0.27084330, 0.50003796, 0.71267330, 0.90350431}, -69.5},
    {7, 1.0367255f, {0.09088617, 0.34031118, 0.72890596}, -69.4},
    {13,
     1.3823007f,
     {0.05421752, 0.19679795, 0.38308730, 0.57313638, 0.74872092, 0.91429370},
     -85.3},
};

/// H(z) = (A(z^2) + B(z^2) / z) / 2 at z = exp(i angle).
double magnitude(const std::vector<float>& coefficients, double angle) {
    const std::complex<double> delay = std::polar(1.0, -angle);
    std::complex<double> branches[2] = {1.0, delay};
    for (std::size_t i = 0; i < coefficients.size(); ++i) {
        const auto c = static_cast<double>(coefficients[i]);
        branches[i % 2] *= (c + delay * delay) / (1.0 + c * delay * delay);
    }
    return std::abs(branches[0] + branches[1]) / 2.0;
}

}  // namespace

TEST_CASE("EllipticDesign: coefficients to the last digit, stopband peaks to 0.1 dB") {
    for (const auto& row : published) {
        INFO("order " << row.order << ", edge " << row.edge);
        const auto edge = static_cast<double>(row.edge);
        std::vector<double> coefficients(static_cast<std::size_t>(row.order / 2));
        sr::designHalfBand(row.order, edge, coefficients);
        REQUIRE(coefficients.size() == row.coefficients.size());
        for (std::size_t i = 0; i < coefficients.size(); ++i)
            CHECK(std::round(coefficients[i] * 1e8) == std::round(row.coefficients[i] * 1e8));

        const std::vector<float> rounded(coefficients.begin(), coefficients.end());
        double peak = 0.0;
        for (int i = 0; i <= 20000; ++i)
            peak = std::max(peak, magnitude(rounded, pi - edge * i / 20000));
        CHECK(std::abs(20.0 * std::log10(peak) - row.stopbandPeakDb) < 0.1);
    }
}
