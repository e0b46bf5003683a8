#include "cinder/plot/Response.h"

#include "core/platform/Denormals.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace cinder {

namespace {

constexpr double gap = std::numeric_limits<double>::quiet_NaN();
constexpr double degreesPerRadian = 180.0 / std::numbers::pi;

// Switches and ramps have come to rest when the impulse comes.
constexpr double restSeconds = 0.05;
// A tail is over when for a while nothing was louder than this next to the peak.
constexpr float over = 1e-8f;
constexpr double quietSeconds = 0.1;
constexpr double longestSeconds = 20.0;

}  // namespace

void ImpulseSource::render(wave::BasicBlock<float>* block, int numSamples,
                           unsigned) noexcept CINDER_REALTIME {
    const std::uint64_t start = environment->getPosition();
    std::fill_n(block->data(), numSamples, 0.0f);
    const bool isHere = place >= start && place - start < static_cast<std::uint64_t>(numSamples);
    if (isHere) (*block)[static_cast<int>(place - start)] = 1.0f;
    setConstant(!isHere);
}

ImpulseRig::ImpulseRig(double sampleRate) : sampleRate(sampleRate) {
    environment.setSampleRate(static_cast<float>(sampleRate));
}

std::vector<std::vector<float>> ImpulseRig::play(std::span<wave::Producer* const> outputs) {
    const platform::FlushDenormalsScope asInAHost;
    const int blockSize = environment.getMaxBlockSize();
    std::vector<std::vector<float>> tails(outputs.size());
    const auto playBlock = [&](bool isKept) {
        float loudest = 0.0f;
        environment.beginBlock();
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            const float* const block = outputs[i]->pull(blockSize)->data();
            for (int n = 0; n < blockSize; ++n)
                loudest = std::max(loudest, std::abs(block[n]));
            if (isKept) tails[i].insert(tails[i].end(), block, block + blockSize);
        }
        environment.render(blockSize, 0);
        return loudest;
    };

    const int numRestBlocks = static_cast<int>(restSeconds * sampleRate) / blockSize + 1;
    source.place =
        environment.getPosition() + static_cast<std::uint64_t>(numRestBlocks * blockSize);
    for (int i = 0; i < numRestBlocks; ++i)
        playBlock(false);
    float peak = 0.0f;
    const double quietBlocks = quietSeconds * sampleRate / blockSize;
    const double longestBlocks = longestSeconds * sampleRate / blockSize;
    int quiet = 0;
    for (int i = 0; i < longestBlocks && quiet < quietBlocks; ++i) {
        const float loudest = playBlock(true);
        peak = std::max(peak, loudest);
        quiet = loudest <= peak * over ? quiet + 1 : 0;
    }
    return tails;
}

std::vector<float> ImpulseRig::play(wave::Producer& output) {
    wave::Producer* const outputs[] = {&output};
    return play(outputs).front();
}

Response responseOf(std::span<const float> h, std::span<const double> hz, double sampleRate) {
    Response response;
    for (const double frequency : hz) {
        std::complex<double> sum = 0.0, turn = 1.0;
        const auto step = std::polar(1.0, -2.0 * std::numbers::pi * frequency / sampleRate);
        for (const float sample : h) {
            sum += static_cast<double>(sample) * turn;
            turn *= step;
        }
        response.push_back(sum);
    }
    return response;
}

std::vector<double> audibleHertz(double sampleRate, int numSteps) {
    const double lowest = 20.0, highest = std::min(20000.0, 0.499 * sampleRate);
    std::vector<double> hz;
    for (int i = 0; i <= numSteps; ++i)
        hz.push_back(lowest * std::pow(highest / lowest, i * 1.0 / numSteps));
    return hz;
}

double decibelsOf(std::complex<double> response) {
    return 20.0 * std::log10(std::max(std::abs(response), 1e-12));
}

std::vector<Point> magnitudePoints(std::span<const double> hz, const Response& response) {
    std::vector<Point> points;
    for (std::size_t i = 0; i < hz.size(); ++i)
        points.push_back({hz[i], decibelsOf(response[i])});
    return points;
}

std::vector<Point> phasePoints(std::span<const double> hz, const Response& response) {
    std::vector<Point> points;
    double degrees = 0.0;
    for (std::size_t i = 0; i < hz.size(); ++i) {
        const double wrapped = std::arg(response[i]) * degreesPerRadian;
        degrees = i == 0 ? wrapped : degrees + std::remainder(wrapped - degrees, 360.0);
        points.push_back({hz[i], degrees});
    }
    const bool isLowPass = std::abs(response.front()) >= std::abs(response.back());
    const double turns = std::round((isLowPass ? points.front() : points.back()).y / 360.0);
    for (Point& point : points)
        point.y -= 360.0 * turns;
    return points;
}

std::vector<Point> wrappedPhasePoints(std::span<const double> hz, const Response& response,
                                      const std::function<bool(std::complex<double>)>& isHeard) {
    std::vector<Point> points;
    for (std::size_t i = 0; i < hz.size(); ++i) {
        const double degrees = std::arg(response[i]) * degreesPerRadian;
        if (!points.empty() && std::abs(degrees - points.back().y) > 180.0)
            points.push_back({hz[i], gap});
        points.push_back({hz[i], isHeard(response[i]) ? degrees : gap});
    }
    return points;
}

Axis hertzAxis(std::span<const double> hz) {
    return {"Hz", Axis::Kind::Hertz, hz.front(), hz.back()};
}

Axis decibelAxis(std::span<const Series> series, double depth) {
    auto [lowest, highest] = heightsOf(series);
    lowest = std::max(std::min(lowest, highest - 1.0), highest - depth);
    return axisAround(Axis::Kind::Decibels, "dB", lowest, highest);
}

}  // namespace cinder
