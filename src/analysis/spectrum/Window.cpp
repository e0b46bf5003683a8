#include "analysis/spectrum/Window.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cinder {
namespace {

/// The modified Bessel function of order 0: the sum of ((x / 2)^k / k!)^2.
double besselI0(double x) {
    constexpr double smallest = 1e-9;
    double sum = 1.0, term = 1.0;
    for (double k = 2.0; term > smallest * sum; k += 2.0) {
        term *= (x / k) * (x / k);
        sum += term;
    }
    return sum;
}

/// The exponent that holds the side lobes at `attenuation` dB below the main lobe.
double kaiserBeta(double attenuation) {
    constexpr double rectangle = 13.26;  // what a window of ones attenuates
    if (attenuation >= 60.0) return 0.12438 * attenuation + 0.783594;
    if (!(attenuation >= rectangle)) return 0.0;
    const double excess = attenuation - rectangle;
    return 0.76609 * std::pow(excess, 0.4) + 0.09834 * excess;
}

/// offset - (1 - offset) cos(2 pi i / last)
void raisedCosine(float* buffer, int start, int count, double last, double offset) {
    const double turn = 2.0 * std::numbers::pi / last;
    for (int i = 0; i < count; ++i)
        buffer[i] = static_cast<float>(offset - (1.0 - offset) * std::cos(turn * (start + i)));
}

double kaiser(float* buffer, int start, int count, double last, double beta) {
    const double scale = 1.0 / besselI0(beta);
    double sum = 0.0;
    for (int i = 0; i < count; ++i) {
        const double x = start + i;
        // Beyond the ends the root would not be real.
        const double root = std::sqrt(std::max((last - x) * x, 0.0));
        const double value = besselI0(beta * root * 2.0 / last) * scale;
        buffer[i] = static_cast<float>(value);
        sum += value;
    }
    return sum;
}

}  // namespace

void window(WindowType type, float* buffer, int start, int count, int length, float parameter,
            double* sum) {
    constexpr double hammingOffset = 0.54;
    const double last = length - 1.0;
    double total = 0.0;
    if (length > 1 && type == WindowType::Hann) {
        raisedCosine(buffer, start, count, last, 0.5);
        total = last * 0.5;
    } else if (length > 1 && type == WindowType::Hamming) {
        raisedCosine(buffer, start, count, last, hammingOffset);
        total = last * hammingOffset + 0.08;  // both ends are 0.08, and `last` counts one of them
    } else if (length > 1 && type == WindowType::Kaiser) {
        total = kaiser(buffer, start, count, last, kaiserBeta(static_cast<double>(parameter)));
        if (start != 0 && sum) total += *sum;
    } else {
        std::fill_n(buffer, std::max(count, 0), 1.0f);
        total = count;
    }
    if (sum) *sum = total;
}

}  // namespace cinder
