#include "presets/factory/Loudness.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace cinder::test {

namespace {

constexpr std::size_t hop = 4800, hopsPerBlock = 4;
constexpr double silentLufs = -70.0, quietLu = 10.0;

struct Biquad {
    double b0, b1, b2, a1, a2;
    double s1 = 0.0, s2 = 0.0;

    double next(double x) {
        const double y = b0 * x + s1;
        s1 = b1 * x - a1 * y + s2;
        s2 = b2 * x - a2 * y;
        return y;
    }
};

// The head as a sphere, and the ear's little regard for the lowest octaves.
constexpr Biquad headShelf = {1.53512485958697, -2.69169618940638, 1.19839281085285,
                              -1.69065929318241, 0.73248077421585};
constexpr Biquad lowCut = {1.0, -2.0, 1.0, -1.99004745483398, 0.99007225036621};

double lufsOf(double power) {
    return -0.691 + 10.0 * std::log10(power);
}

double meanAbove(const std::vector<double>& powers, double lufs) {
    double sum = 0.0;
    int count = 0;
    for (const double power : powers) {
        if (lufsOf(power) <= lufs) continue;
        sum += power;
        ++count;
    }
    return count == 0 ? 0.0 : sum / count;
}

}  // namespace

double loudnessOf(std::span<const std::vector<float>> channels) {
    std::vector<double> hops(channels[0].size() / hop);
    for (const auto& channel : channels) {
        Biquad shelf = headShelf, cut = lowCut;
        for (std::size_t n = 0; n < hops.size() * hop; ++n) {
            const double y = cut.next(shelf.next(static_cast<double>(channel[n])));
            hops[n / hop] += y * y / static_cast<double>(hop);
        }
    }
    std::vector<double> blocks;
    for (std::size_t i = 0; i + hopsPerBlock <= hops.size(); ++i) {
        double sum = 0.0;
        for (std::size_t j = 0; j < hopsPerBlock; ++j)
            sum += hops[i + j];
        blocks.push_back(sum / static_cast<double>(hopsPerBlock));
    }
    const double loud = meanAbove(blocks, silentLufs);
    return lufsOf(meanAbove(blocks, std::max(silentLufs, lufsOf(loud) - quietLu)));
}

}  // namespace cinder::test
