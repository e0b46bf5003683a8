#include "cinder/plot/SpectrumRecorder.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

namespace cinder::test {

namespace {

constexpr double rate = 48000.0;
constexpr double hz = 512 * rate / SpectrumRecorder::size;  // in the middle of a bin

/// Played to `add` in pieces of 1, 2, 3 ... samples.
template <typename Add>
void playSine(int numFrames, float first, float second, Add add) {
    std::vector<float> left, right;
    for (int n = 0; n < numFrames; ++n) {
        const auto x = static_cast<float>(std::sin(2.0 * std::numbers::pi * hz * n / rate));
        left.push_back(first * x);
        right.push_back(second * x);
    }
    for (int from = 0, count = 1; from < numFrames; from += count, ++count) {
        const float* const channels[] = {left.data() + from, right.data() + from};
        add(channels, std::min(count, numFrames - from));
    }
}

double heightAt(const Series& series, double at) {
    return std::ranges::min_element(series.points, {},
                                    [&](const Point& p) { return std::abs(p.x - at); })
        ->y;
}

}  // namespace

TEST_CASE("SpectrumRecorder: a sine reads its peak, in each stream its own") {
    SpectrumRecorder recorder(2);
    constexpr int numFrames = 480'000;
    playSine(numFrames, 0.25f, 0.5f,
             [&](std::span<const float* const> audio, int n) { recorder.addInput(audio, n); });
    playSine(numFrames, 0.0f, 0.125f,
             [&](std::span<const float* const> audio, int n) { recorder.addOutput(audio, n); });
    recorder.finish();
    const Figure figure = recorder.figure("in and out", rate);
    REQUIRE(figure.panels.size() == 1);
    const std::vector<Series>& series = figure.panels[0].series;
    REQUIRE(series.size() == 4);
    const double expected[] = {-6.02, -6.02, -18.06, -18.06};  // highest and mean of each
    for (std::size_t i = 0; i < 4; ++i) {
        INFO(series[i].name);
        CHECK(std::abs(heightAt(series[i], hz) - expected[i]) < (i % 2 == 0 ? 0.02 : 0.1));
        // Where the sine begins and ends it is spread, now and then by much.
        CHECK(heightAt(series[i], 3.0 * hz) < (i % 2 == 0 ? -50.0 : -70.0));
    }
}

}  // namespace cinder::test
