#include "support/Spectrum.h"

#include <cassert>
#include <cmath>
#include <numbers>
#include <utility>

namespace cinder::test {

namespace {

/// Puts every element where its index, read backwards in binary, says.
void reverseIndexBits(std::span<std::complex<double>> x) {
    for (std::size_t i = 1, j = 0; i < x.size(); ++i) {
        std::size_t bit = x.size() >> 1;
        for (; j & bit; bit >>= 1)
            j ^= bit;
        j ^= bit;
        if (i < j) std::swap(x[i], x[j]);
    }
}

}  // namespace

void fourierTransform(std::span<std::complex<double>> x) {
    assert((x.size() & (x.size() - 1)) == 0);
    reverseIndexBits(x);
    for (std::size_t half = 1; half < x.size(); half *= 2) {
        for (std::size_t k = 0; k < half; ++k) {
            // From the library each time: a product of steps would lose 1e-13 over long spectra.
            const auto turn = std::polar(
                1.0, -std::numbers::pi * static_cast<double>(k) / static_cast<double>(half));
            for (std::size_t i = k; i < x.size(); i += 2 * half) {
                const std::complex<double> odd = turn * x[i + half];
                x[i + half] = x[i] - odd;
                x[i] += odd;
            }
        }
    }
}

std::vector<double> powerSpectrum(std::span<const float> samples) {
    std::vector<std::complex<double>> x(samples.begin(), samples.end());
    fourierTransform(x);
    const auto length = static_cast<double>(x.size());
    std::vector<double> power(x.size() / 2 + 1);
    for (std::size_t k = 0; k < power.size(); ++k) {
        // All lines but the first and the last stand for their mirror image as well.
        const double images = k == 0 || k == x.size() / 2 ? 1.0 : 2.0;
        power[k] = images * std::norm(x[k]) / (length * length);
    }
    return power;
}

double decibelsOfPower(double ratio) {
    return 10.0 * std::log10(ratio);
}

}  // namespace cinder::test
