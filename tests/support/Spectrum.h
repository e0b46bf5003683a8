#pragma once

#include <complex>
#include <span>
#include <vector>

namespace cinder::test {

/// X[k] = sum x[n] exp(-2 pi i k n / N), in place, N a power of two.
/// Source  J. Cooley, J. Tukey, "An algorithm for the machine calculation of complex Fourier
///         series", 1965
void fourierTransform(std::span<std::complex<double>> x);

/// Power in the lines 0..N/2 of N samples, N a power of two, without a window: a sine of amplitude
/// a that fits in a whole number of times has the power a^2 / 2 in its line and none elsewhere.
std::vector<double> powerSpectrum(std::span<const float> samples);

/// 10 log10(ratio).
double decibelsOfPower(double ratio);

}  // namespace cinder::test
