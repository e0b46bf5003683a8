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

struct Row {
    int order;
    float edge;  // a float: the last printed digit depends on its rounding
    std::vector<double> coefficients;
    double stopbandPeakDb;
};

const Row published[] = {
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

std::vector<double> designed(int order, double edge) {
    std::vector<double> coefficients(static_cast<std::size_t>(order / 2));
    sr::designHalfBand(order, edge, coefficients);
    return coefficients;
}

/// H(z) = (A(z^2) + B(z^2) / z) / 2 at z = exp(i angle).
double magnitude(const std::vector<double>& coefficients, double angle) {
    const std::complex<double> delay = std::polar(1.0, -angle);
    std::complex<double> branches[2] = {1.0, delay};
    for (std::size_t i = 0; i < coefficients.size(); ++i) {
        const double c = coefficients[i];
        branches[i % 2] *= (c + delay * delay) / (1.0 + c * delay * delay);
    }
    return std::abs(branches[0] + branches[1]) / 2.0;
}

double peakDb(const std::vector<double>& coefficients, double from, double to) {
    constexpr int numPoints = 20000;
    double peak = 0.0;
    for (int i = 0; i <= numPoints; ++i)
        peak = std::max(peak, magnitude(coefficients, from + (to - from) * i / numPoints));
    return 20.0 * std::log10(peak);
}

}  // namespace

TEST_CASE("EllipticDesign: coefficients to the last digit, stopband peaks to 0.1 dB") {
    for (const Row& row : published) {
        const auto edge = static_cast<double>(row.edge);
        const auto coefficients = designed(row.order, edge);
        INFO("order " << row.order << ", edge " << edge);
        REQUIRE(coefficients.size() == row.coefficients.size());
        for (std::size_t i = 0; i < coefficients.size(); ++i)
            CHECK(std::round(coefficients[i] * 1e8) == std::round(row.coefficients[i] * 1e8));

        std::vector<double> rounded;
        for (const double c : coefficients)
            rounded.push_back(static_cast<double>(static_cast<float>(c)));
        CHECK(std::abs(peakDb(rounded, pi - edge, pi) - row.stopbandPeakDb) < 0.1);
    }
}

TEST_CASE("EllipticDesign: every design is stable, and its stopband ripples at one height") {
    for (int order = 3; order <= 13; order += 2)
        for (const double edge : {0.8, 1.0367255, 1.3, 1.4891149}) {
            const auto coefficients = designed(order, edge);
            INFO("order " << order << ", edge " << edge);
            CHECK(std::ranges::is_sorted(coefficients));
            CHECK(coefficients.front() > 0.0);
            CHECK(coefficients.back() < 1.0);
            // The first ripple stands at the stopband's edge, the others at the same height.
            const double atEdge = 20.0 * std::log10(magnitude(coefficients, pi - edge));
            CHECK(std::abs(peakDb(coefficients, pi - edge + 1e-3, pi) - atEdge) < 0.1);
            CHECK(magnitude(coefficients, 0.0) == doctest::Approx(1.0).epsilon(1e-12));
        }
}
