#include "cinder/plot/SineRun.h"

#include "cinder/measure/StyleProbe.h"
#include "core/Constants.h"

#include <kissfft/kissfft.hh>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace cinder {

namespace {

constexpr double twoPi = 2.0 * std::numbers::pi;
constexpr double silence = 1e-10;  // -200 dB, below all that float samples hold
constexpr int cloudPeriods = 16;

/// Samples that lie side by side in phase lie side by side in height, or the wave is none: going
/// through all of them then is a much longer way than the few ups and downs of a period.
constexpr double longestWay = 100.0;

double decibels(double amplitude) {
    return 20.0 * std::log10(std::max(amplitude, silence));
}

/// The amplitudes of the sines in a signal that repeats, one for each Hz when it is a second long.
std::vector<double> amplitudesOf(const std::vector<float>& samples) {
    const std::size_t size = samples.size();
    std::vector<std::complex<double>> in(samples.begin(), samples.end()), out(size);
    kissfft<double>(size, false).transform(in.data(), out.data());
    std::vector<double> amplitudes;
    for (std::size_t line = 0; line <= size / 2; ++line)
        amplitudes.push_back(std::abs(out[line]) * (line == 0 ? 1.0 : 2.0) /
                             static_cast<double>(size));
    return amplitudes;
}

}  // namespace

SineRun::SineRun(const StyleSet& styles, const StylePlot& plot, double drivePercent)
    : rate(plot.sampleRate), amplitude(std::exp(plot.levelDb * logPerDecibel)) {
    StyleProbeSetup setup{plot.style};
    setup.sampleRate = rate;
    setup.drive = static_cast<float>(drivePercent * 0.01);
    setup.cabinet = plot.cabinet;
    StyleProbe probe(styles, setup);
    latency = probe.latency();

    std::vector<float> second;
    for (int n = 0; n < rate; ++n)
        second.push_back(static_cast<float>(inputAt(n * 1.0 / rate * hz)));
    probe.play(second);
    out = probe.play(second);
    lines = amplitudesOf(out);
    foldPeriods();
}

double SineRun::inputAt(double phase) const {
    return amplitude * std::sin(twoPi * phase);
}

void SineRun::foldPeriods() {
    for (int n = 0; n < rate; ++n) {
        // In whole numbers, so that no sample lands on the wrong side of another.
        const auto turned = (static_cast<std::int64_t>(n - latency + rate) * hz) % rate;
        folded.push_back({static_cast<double>(turned) / rate,
                          static_cast<double>(out[static_cast<std::size_t>(n)])});
    }
    std::ranges::sort(folded, {}, &Sample::phase);
    double way = 0.0;
    for (std::size_t i = 1; i < folded.size(); ++i)
        way += std::abs(folded[i].value - folded[i - 1].value);
    const auto [lowest, highest] = std::ranges::minmax(out);
    periodic = way < longestWay * static_cast<double>(highest - lowest);
}

std::vector<Point> SineRun::wave(int numPeriods) const {
    std::vector<Point> points;
    if (periodic) {
        // Many periods show less of each.
        const std::size_t step = 1 + folded.size() * static_cast<std::size_t>(numPeriods) / 100'000;
        for (int period = 0; period < numPeriods; ++period)
            for (std::size_t i = 0; i < folded.size(); i += step)
                points.push_back({period + folded[i].phase, folded[i].value});
        return points;
    }
    for (int n = 0; n * hz <= numPeriods * rate; ++n)
        points.push_back(
            {n * 1.0 * hz / rate, static_cast<double>(out[static_cast<std::size_t>(n + latency)])});
    return points;
}

std::vector<Point> SineRun::transfer() const {
    std::vector<Point> points;
    if (periodic) {
        for (const Sample& sample : folded)
            points.push_back({inputAt(sample.phase), sample.value});
        points.push_back(points.front());
        return points;
    }
    for (int n = 0; n * hz < cloudPeriods * rate; ++n)
        points.push_back({inputAt(n * 1.0 * hz / rate),
                          static_cast<double>(out[static_cast<std::size_t>(n + latency)])});
    return points;
}

double SineRun::amplitudeOf(int harmonic) const {
    return lines[static_cast<std::size_t>(harmonic * hz)];
}

std::vector<Point> SineRun::harmonics() const {
    std::vector<Point> points;
    for (int harmonic = 1; harmonic <= numHarmonics && harmonic * hz * 2 < rate; ++harmonic)
        points.push_back({harmonic * 1e-3 * hz, decibels(amplitudeOf(harmonic))});
    return points;
}

std::vector<Point> SineRun::between(int widthHz) const {
    std::vector<Point> points;
    const int numLines = static_cast<int>(lines.size());
    for (int from = 1; from < numLines; from += widthHz) {
        const int end = std::min(from + widthHz, numLines);
        double highest = 0.0;
        for (int line = from; line < end; ++line)
            if (line % hz != 0) highest = std::max(highest, lines[static_cast<std::size_t>(line)]);
        points.push_back({(from + end - 1) * 0.5e-3, decibels(highest)});
    }
    return points;
}

double SineRun::distortion() const {
    double above = 0.0;
    for (int harmonic = 2; harmonic <= numHarmonics && harmonic * hz * 2 < rate; ++harmonic)
        above += amplitudeOf(harmonic) * amplitudeOf(harmonic);
    const double all = above + amplitudeOf(1) * amplitudeOf(1);
    return std::sqrt(above / std::max(all, silence * silence));
}

}  // namespace cinder
