#pragma once

#include <cstdint>

namespace cinder {

/// The numbers count: any other one stands for the rectangle.
enum class WindowType : std::int32_t { Hann = 1, Hamming = 2, Kaiser = 3, Rectangle = 4 };

/// Values start..start + count - 1 of a symmetrical window of `length` points, i counted from 0:
///
///     Hann       0.5  - 0.5  cos(2 pi i / (length - 1))
///     Hamming    0.54 - 0.46 cos(2 pi i / (length - 1))
///     Kaiser     I0(beta sqrt(i (length - 1 - i)) 2 / (length - 1)) / I0(beta)
///     rectangle  1
///
/// Range   `parameter` is the attenuation of the side lobes in dB, of the Kaiser window alone. One
///         point or none has no shape: 1
/// State   if `sum` is not null it receives the sum of the whole window: of all `length` points for
///         Hann and Hamming, of the `count` values for the rectangle and Kaiser, where a `start`
///         above 0 adds to the sum of the pieces before
/// Source  J. Kaiser, R. Schafer, "On the use of the I0-sinh window for spectrum analysis", 1980
void window(WindowType type, float* buffer, int start, int count, int length, float parameter,
            double* sum);

}  // namespace cinder
