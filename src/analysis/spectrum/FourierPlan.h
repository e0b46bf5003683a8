#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace cinder {

/// Tables that all transforms of one size share, and the window in front of them.
///
///     X[k] = sum x[n] exp(-2 pi i k n / N), real x, k = 0..N / 2
///
/// Shape   N a power of two from 4 to 2^20
/// Range   work is counted in units: a pass costs N, the first one, which is two in one, 3 N, and
///         one over groups of 1024 and more, which leaves the cache, 2 N
/// Source  H. Sorensen et al., "Real-valued fast Fourier transform algorithms", 1987
class FourierPlan {
public:
    static constexpr int smallestSize = 4;
    static constexpr int largestSize = 1 << 20;
    /// Side lobes stay 72 dB below a line, which itself ends 3.3 bins beside its peak.
    static constexpr float windowAttenuation = 72.0f;

    /// One pass: every two groups of half the length become one of `length`.
    struct Pass {
        int length;
        int unitsPerValue;
    };

    explicit FourierPlan(int wanted);

    /// The next power of two, within the range.
    static int sizeFor(int wanted);

    int getSize() const { return size; }
    int getPassCount() const { return passCount; }
    const Pass& getPass(int index) const { return passes[static_cast<std::size_t>(index)]; }
    /// Units of a whole transform.
    int getTotalUnits() const { return totalUnits; }

    /// Where the input that stands at `i` in the first pass comes from.
    const std::int32_t* getReversedIndices() const { return reversed.data(); }
    /// cos and sin of 2 pi k / length for k = 0..length / 4 - 1, length from 8 to N.
    const float* getCosines(int length) const { return cosines.data() + length / 4 - 2; }
    const float* getSines(int length) const { return sines.data() + length / 4 - 2; }

    /// A Kaiser window of N + 1 points without its last one.
    const float* getWindow() const { return windowValues.data(); }
    /// Magnitude of a line times this is the amplitude of its sine.
    float getWindowScale() const { return windowScale; }

private:
    void fillPasses();
    void fillReversed();
    void fillTurns();
    void fillWindow();

    static constexpr int mostPasses = 19;

    int size;
    int passCount = 0;
    std::array<Pass, mostPasses> passes{};
    int totalUnits = 0;
    std::vector<std::int32_t> reversed;
    std::vector<float> cosines, sines;  // pass by pass
    std::vector<float> windowValues;
    float windowScale = 1.0f;
};

}  // namespace cinder
