#pragma once

#include <complex>
#include <span>
#include <vector>

namespace cinder {

/// X[k] = 2 / N sum x[n] exp(-2 pi i k n / N) for `count` lines from k = `first` on, `spacing`
/// apart: the amplitude of a sine that fits a whole number of times, but for line 0.
/// Shape   any N; the time goes with N times `count`
/// Source  G. Goertzel, "An algorithm for the evaluation of finite trigonometric series", 1958
std::vector<std::complex<double>> spectralLines(std::span<const float> x, int first, int count,
                                                int spacing = 1);

}  // namespace cinder
