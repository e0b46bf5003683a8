#pragma once

#include "cinder/plot/Figure.h"
#include "wave/Producer.h"

#include <complex>
#include <functional>
#include <span>
#include <vector>

namespace cinder {

/// An impulse of height 1 at a place of the time line.
class ImpulseSource final : public wave::Source {
public:
    using Source::Source;

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

    std::uint64_t place = 0;
};

/// Measures linear stages by what they make of an impulse.
/// State   environment and source come first, then the stages that stand on them
class ImpulseRig {
public:
    explicit ImpulseRig(double sampleRate);

    wave::Environment environment;
    ImpulseSource source{&environment};

    /// What each output gives from the impulse on, as long as any of them still sounds.
    std::vector<std::vector<float>> play(std::span<wave::Producer* const> outputs);
    std::vector<float> play(wave::Producer& output);

private:
    double sampleRate;
};

using Response = std::vector<std::complex<double>>;

/// sum h[n] exp(-2 pi j hz n / rate), for each of the frequencies.
Response responseOf(std::span<const float> h, std::span<const double> hz, double sampleRate);

/// In equal ratios from 20 Hz to 20 kHz, or as near to half the rate as is good to draw.
std::vector<double> audibleHertz(double sampleRate, int numSteps = 600);

double decibelsOf(std::complex<double> response);

/// Points of decibels, and of degrees: either turning on through whole turns, with -180..180 at the
/// louder end, or cut to -180..180 with a gap where it leaps. Where `isHeard` says no, or
/// where nothing comes out, there is a gap.
std::vector<Point> magnitudePoints(std::span<const double> hz, const Response& response);
std::vector<Point> phasePoints(std::span<const double> hz, const Response& response);
std::vector<Point> wrappedPhasePoints(
    std::span<const double> hz, const Response& response,
    const std::function<bool(std::complex<double>)>& isHeard = [](auto) { return true; });

/// Hertz from first to last.
Axis hertzAxis(std::span<const double> hz);
/// Around what the series show: a decibel at least, and no deeper than `depth` below the highest.
Axis decibelAxis(std::span<const Series> series, double depth);

}  // namespace cinder
