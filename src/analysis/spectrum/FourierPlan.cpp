#include "analysis/spectrum/FourierPlan.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

#include "analysis/spectrum/Window.h"

namespace cinder {

int FourierPlan::sizeFor(int wanted) {
    const int inRange = std::clamp(wanted, smallestSize, largestSize);
    return static_cast<int>(std::bit_ceil(static_cast<unsigned>(inRange)));
}

FourierPlan::FourierPlan(int wanted) : size(sizeFor(wanted)) {
    fillPasses();
    fillReversed();
    fillTurns();
    fillWindow();
}

void FourierPlan::fillPasses() {
    constexpr int firstLength = 4, firstCost = 3, cacheLength = 1024;
    for (int length = firstLength; length <= size; length *= 2) {
        const int cost = length == firstLength ? firstCost : length < cacheLength ? 1 : 2;
        passes[static_cast<std::size_t>(passCount++)] = {length, cost};
        totalUnits += cost * size;
    }
}

void FourierPlan::fillReversed() {
    reversed.resize(static_cast<std::size_t>(size));
    std::int32_t* const source = reversed.data();
    // Doubling a table: the new upper half has one more bit, which comes out lowest.
    for (int filled = 1, step = size / 2; filled < size; filled *= 2, step /= 2)
        for (int i = 0; i < filled; ++i)
            source[filled + i] = source[i] + step;
}

void FourierPlan::fillTurns() {
    for (int length = 8; length <= size; length *= 2)
        for (int k = 0; k < length / 4; ++k) {
            const double angle = 2.0 * std::numbers::pi * k / length;
            cosines.push_back(static_cast<float>(std::cos(angle)));
            sines.push_back(static_cast<float>(std::sin(angle)));
        }
}

void FourierPlan::fillWindow() {
    windowValues.resize(static_cast<std::size_t>(size));
    double sum = 0.0;
    // One point longer than the analysis: a periodic window, whose end is the start of the next.
    window(WindowType::Kaiser, windowValues.data(), 0, size, size + 1, windowAttenuation, &sum);
    windowScale = static_cast<float>(2.0 / sum);
}

}  // namespace cinder
