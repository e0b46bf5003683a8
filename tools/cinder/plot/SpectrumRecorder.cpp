#include "cinder/plot/SpectrumRecorder.h"

#include "cinder/plot/Response.h"
#include "cinder/plot/Text.h"

#include <algorithm>
#include <cmath>

namespace cinder {

namespace {

constexpr double lowestDb = -120.0, highestDb = 6.0;
constexpr double lowestHz = 20.0, highestHz = 20000.0;

/// One look takes in one hop, and so shows each by itself.
void take(const SpectrumSource& spectrum, std::vector<double>& sums, std::vector<float>& highest) {
    const float* const values = spectrum.getValues();
    for (std::size_t k = 0; k < sums.size(); ++k) {
        sums[k] += static_cast<double>(values[k]) * static_cast<double>(values[k]);
        highest[k] = std::max(highest[k], values[k]);
    }
}

}  // namespace

void SpectrumRecorder::Stream::add(std::span<const float* const> samples, int numFrames) {
    for (std::size_t channel = 0; channel < channels.size(); ++channel)
        channels[channel].insert(channels[channel].end(), samples[channel],
                                 samples[channel] + numFrames);
}

void SpectrumRecorder::Stream::fillUp() {
    for (auto& channel : channels)
        channel.resize(std::max<std::size_t>(channel.size(), hop));
}

void SpectrumRecorder::Stream::dropFrame() {
    for (auto& channel : channels)
        channel.erase(channel.begin(), channel.begin() + hop);
}

const float* SpectrumRecorder::Stream::getFrameData(std::int32_t, std::int32_t channel) const {
    return channels[static_cast<std::size_t>(channel)].data();
}

std::int32_t SpectrumRecorder::Stream::getFrameCount() const {
    return channels[0].size() >= hop ? 1 : 0;
}

SpectrumRecorder::SpectrumRecorder(int numChannels) : input(numChannels), output(numChannels) {
    analyzer.getMeasurement()->setSource(&input);
    analyzer.createMeasurement()->setSource(&output);
}

void SpectrumRecorder::addInput(std::span<const float* const> channels, int numFrames) {
    input.add(channels, numFrames);
    look();
}

void SpectrumRecorder::addOutput(std::span<const float* const> channels, int numFrames) {
    output.add(channels, numFrames);
    look();
}

void SpectrumRecorder::finish() {
    while (!input.isEmpty() || !output.isEmpty()) {
        input.fillUp();
        output.fillUp();
        look();
    }
}

void SpectrumRecorder::look() {
    while (input.getFrameCount() > 0 && output.getFrameCount() > 0) {
        SpectrumSource& first = *analyzer.getMeasurement(0);
        first.lock();
        take(first, seenInput.sumOfSquares, seenInput.highest);
        take(*analyzer.getMeasurement(1), seenOutput.sumOfSquares, seenOutput.highest);
        first.unlock();
        input.dropFrame();
        output.dropFrame();
        ++numHops;
    }
}

std::vector<Series> SpectrumRecorder::series(const Seen& seen, const std::string& name,
                                             Colour colour, double sampleRate) const {
    std::vector<Point> mean, highest;
    for (std::size_t k = 1; k < seen.highest.size(); ++k) {
        const double hz = static_cast<double>(k) * sampleRate / size;
        const double level = std::sqrt(seen.sumOfSquares[k] / std::max(numHops, 1));
        mean.push_back({hz, std::max(decibelsOf(level), 2.0 * lowestDb)});
        highest.push_back({hz, std::max(decibelsOf(double{seen.highest[k]}), 2.0 * lowestDb)});
    }
    return {{name + ", highest", {colour.rgb, 0.35}, std::move(highest), Series::Look::Line, 1.0},
            {name, colour, std::move(mean), Series::Look::Line, 1.6}};
}

Figure SpectrumRecorder::figure(const std::string& title, double sampleRate) const {
    std::vector<Series> all = series(seenInput, "input", palette::apart[0], sampleRate);
    for (Series& more : series(seenOutput, "output", palette::apart[1], sampleRate))
        all.push_back(std::move(more));
    Figure figure;
    figure.title = title;
    figure.subtitle = formatted("Mean and highest of %d spectra of %d samples at %g kHz", numHops,
                                size, sampleRate * 1e-3);
    figure.width = 1080;
    figure.height = 560;
    figure.addPanel("", {"Hz", Axis::Kind::Hertz, lowestHz, std::min(highestHz, 0.5 * sampleRate)},
                    {"dBFS", Axis::Kind::Decibels, lowestDb, highestDb}, std::move(all));
    return figure;
}

}  // namespace cinder
