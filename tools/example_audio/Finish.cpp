#include "example_audio/Finish.h"

#include "example_audio/Filters.h"

#include <cmath>
#include <numbers>
#include <numeric>

namespace cinder::example {

namespace {

constexpr double peakDb = -3.0;
constexpr double lowestHz = 25.0;
constexpr double fadeInSeconds = 0.001;
constexpr double fadeOutSeconds = 0.004;

void removeRumble(Sound& sound, int rate) {
    StateVariableFilter filter;
    filter.set(lowestHz, 0.7, rate);
    for (const double x : sound)
        filter.next(x);  // as if the loop had run before
    for (double& x : sound)
        x = filter.next(x).high;
    const double mean =
        std::accumulate(sound.begin(), sound.end(), 0.0) / static_cast<double>(sound.size());
    for (double& x : sound)
        x -= mean;
}

void fadeEnds(Sound& sound, int rate) {
    const auto fade = [&](double seconds, auto sampleAt) {
        const auto length = static_cast<size_t>(seconds * rate);
        for (size_t i = 0; i < length; ++i) {
            const double x = static_cast<double>(i) / static_cast<double>(length);
            sampleAt(i) *= 0.5 - 0.5 * std::cos(std::numbers::pi * x);
        }
    };
    fade(fadeInSeconds, [&](size_t i) -> double& { return sound[i]; });
    fade(fadeOutSeconds, [&](size_t i) -> double& { return sound[sound.size() - 1 - i]; });
}

}  // namespace

std::vector<std::vector<float>> finished(Loop loop, int numChannels) {
    std::vector<Sound> sides = {std::move(loop.left)};
    if (numChannels == 2)
        sides.push_back(std::move(loop.right));
    else
        for (size_t n = 0; n < sides[0].size(); ++n)
            sides[0][n] = 0.5 * (sides[0][n] + loop.right[n]);

    double highest = 0.0;
    for (Sound& side : sides) {
        removeRumble(side, loop.rate);
        fadeEnds(side, loop.rate);
        for (const double x : side)
            highest = std::max(highest, std::abs(x));
    }

    const double gain = gainOfDb(peakDb) / highest;
    std::vector<std::vector<float>> channels;
    for (const Sound& side : sides) {
        auto& channel = channels.emplace_back();
        for (const double x : side)
            channel.push_back(static_cast<float>(gain * x));
    }
    return channels;
}

}  // namespace cinder::example
