#include "analysis/spectrum/RealTimeFrequencyAnalyzer.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

#include "analysis/buffer/RealTimeAudioBuffer.h"
#include "analysis/spectrum/Window.h"
#include "support/Rng.h"

namespace cinder {
namespace {

using Analyzer = RealTimeFrequencyAnalyzer;
using Signal = std::vector<float>;

Signal sine(int length, double cycles, double amplitude) {
    Signal x(static_cast<std::size_t>(length));
    for (std::size_t n = 0; n < x.size(); ++n)
        x[n] = static_cast<float>(
            amplitude * std::sin(2.0 * std::numbers::pi * cycles * static_cast<double>(n) + 0.3));
    return x;
}

/// Channels of any length, of which each lock shows as many whole frames as it is told to.
class Recording final : public AudioSource {
public:
    Recording(std::vector<Signal> channels, int frameSize)
        : channels(std::move(channels)), frameSize(frameSize) {}

    int framesLeft() const { return static_cast<int>(channels.front().size()) / frameSize - taken; }
    void lock() override {
        ++locks;
        ++depth;
    }
    void unlock() override {
        --depth;
        taken += std::exchange(offered, 0);
    }
    std::int32_t getFrameSize() const override { return frameSize; }
    const float* getFrameData(std::int32_t frame, std::int32_t channel) const override {
        return &channels[static_cast<std::size_t>(channel)]
                        [static_cast<std::size_t>((taken + frame) * frameSize)];
    }
    std::int32_t getFrameCount() const override { return offered; }
    std::int32_t getChannelCount() const override { return static_cast<int>(channels.size()); }

    std::vector<Signal> channels;
    int frameSize;
    int taken = 0, offered = 0, locks = 0, depth = 0;
};

class SetTimer final : public IntervalTimer {
public:
    explicit SetTimer(std::uint32_t* now) : now(now) {}
    void reset() override { start = *now; }
    std::uint32_t elapsed() const override { return *now - start; }

private:
    std::uint32_t* now;
    std::uint32_t start = 0;
};

/// The spectrum after one look at `numFrames` more frames; bins 0..N / 2.
Signal look(Analyzer& analyzer, Recording& source, int numFrames) {
    source.offered = numFrames;
    auto* const measurement = analyzer.getMeasurement();
    measurement->setSource(&source);
    measurement->lock();
    const float* const values = measurement->getValues();
    Signal spectrum(values, values + measurement->getSize() / 2 + 1);
    measurement->unlock();
    return spectrum;
}

Signal lookAtAll(int size, std::vector<Signal> channels, int frameSize = 64) {
    Analyzer analyzer(size, nullptr);
    Recording source(std::move(channels), frameSize);
    return look(analyzer, source, source.framesLeft());
}

TEST_CASE("RealTimeFrequencyAnalyzer: a sine reads its level at its bin, and nothing far away") {
    constexpr double floor = 2.5e-4;  // 72 dB
    for (int size : {256, 2048, 8192})
        for (double amplitude : {1e-4, 1.0, 30.0})
            for (double line : {9.0, size / 5.0, size / 2.0 - 9.0}) {
                const int k = static_cast<int>(line);
                INFO("size " << size << ", amplitude " << amplitude << ", bin " << k);
                const auto spectrumAt = [&](double bin) {
                    Analyzer analyzer(size, nullptr);
                    // The ring is full behind the second look, so no onset is in it.
                    Recording source({sine(2 * size, bin / size, amplitude)}, size);
                    look(analyzer, source, 1);
                    return look(analyzer, source, 1);
                };
                const Signal spectrum = spectrumAt(k);
                CHECK(spectrum[k] == doctest::Approx(amplitude).epsilon(1e-3));
                for (int i = 0; i <= size / 2; ++i)
                    if (std::abs(i - k) > 3) CHECK(spectrum[i] < floor * amplitude);

                // Between two bins: what the window's spectrum has half a bin off its middle.
                std::complex<double> half = 0.0;
                double sum = 0.0;
                Signal shape(static_cast<std::size_t>(size));
                window(WindowType::Kaiser, shape.data(), 0, size, size + 1, 72.0f, &sum);
                for (int n = 0; n < size; ++n)
                    half += std::polar(static_cast<double>(shape[n]), std::numbers::pi * n / size);
                const double expected = amplitude * std::abs(half) / sum;
                CHECK(spectrumAt(k + 0.5)[k] == doctest::Approx(expected).epsilon(2e-3));
            }
    const Signal constant = lookAtAll(256, {Signal(256, 0.25f)});
    CHECK(constant[0] == doctest::Approx(0.5));
}

TEST_CASE("RealTimeFrequencyAnalyzer: the same peaks however looks and frames cut the audio") {
    test::Rng rng = test::Rng::fromEnvironment();
    constexpr int size = 256, length = 6400;
    const std::vector<Signal> noise = {rng.noise(length), rng.noise(length)};
    const Signal expected = lookAtAll(size, noise, 1);
    for (int frameSize : {1, 25, 64, 100, 256, 640}) {
        INFO("frame size " << frameSize << ", seed " << rng.seed());
        Analyzer analyzer(size, nullptr);
        Recording source(noise, frameSize);
        Signal peaks(expected.size(), 0.0f);
        int lastId = 0;
        while (source.framesLeft() > 0) {
            const int longest = std::min(source.framesLeft(), 500 / frameSize + 1);
            const Signal spectrum = look(analyzer, source, rng.integer(0, longest));
            const int id = analyzer.getMeasurement()->getFrameId();
            CHECK(id == source.taken * frameSize / (size / 4));
            if (id == lastId) continue;
            lastId = id;
            std::transform(peaks.begin(), peaks.end(), spectrum.begin(), peaks.begin(),
                           [](float a, float b) { return std::max(a, b); });
        }
        CHECK(peaks == expected);
        CHECK(source.depth == 0);
    }
    // The larger of two channels, bin by bin; a third one is not looked at.
    const Signal left = lookAtAll(size, {noise[0]}), right = lookAtAll(size, {noise[1]});
    for (std::size_t k = 0; k < expected.size(); ++k)
        CHECK(expected[k] == std::max(left[k], right[k]));
    CHECK(lookAtAll(size, {noise[0], noise[1], Signal(length, 1.0f)}) == expected);
}

TEST_CASE("RealTimeFrequencyAnalyzer: locks nest, and without new audio nothing changes") {
    Analyzer analyzer(64, nullptr);
    auto* const second = analyzer.createMeasurement();
    Recording source({sine(640, 0.125, 1.0)}, 64), other({sine(640, 0.25, 0.5)}, 64);
    look(analyzer, source, 1);
    CHECK(source.locks == 0);  // the second measurement has no source
    second->setSource(&other);
    other.offered = 2;
    const Signal spectrum = look(analyzer, source, 3);
    CHECK(analyzer.getMeasurement()->getFrameId() == 8);  // as far as both sources go
    CHECK(second->getValues()[16] == doctest::Approx(0.5).epsilon(0.01));
    CHECK(spectrum[8] == doctest::Approx(1.0).epsilon(0.01));
    source.offered = other.offered = 1;
    second->lock();
    second->lock();
    second->unlock();
    CHECK(source.locks == 2);
    second->unlock();
    CHECK(second->getFrameId() == 12);
    CHECK(look(analyzer, source, 0) == look(analyzer, source, 0));
    CHECK(second->getFrameId() == 12);
    other.frameSize = 32;
    other.offered = 1;
    look(analyzer, source, 1);
    CHECK(second->getFrameId() == 12);
}

TEST_CASE("RealTimeFrequencyAnalyzer: old audio is not joined to new behind a silence") {
    CHECK(Analyzer::getSilenceTimeout(2048) == 555);
    CHECK(Analyzer::getSilenceTimeout(16384) == 1113);
    CHECK(Analyzer::getSilenceTimeout(65536) == 1500);
    CHECK(Analyzer::getSilenceTimeout(std::numeric_limits<int>::max()) == 1500);
    test::Rng rng(3);
    const std::vector<Signal> noise = {rng.noise(8 * 512)};
    for (const auto& [pauseMs, isForgotten] : {std::pair{555u, false}, std::pair{556u, true}}) {
        INFO("pause " << pauseMs << " ms");
        std::uint32_t now = 0;
        Analyzer analyzer(2048, std::make_unique<SetTimer>(&now));
        Recording source(noise, 512);
        look(analyzer, source, 7);
        now += pauseMs;
        look(analyzer, source, 0);  // an empty look is no arrival
        const Signal spectrum = look(analyzer, source, 1);
        const Signal fresh = lookAtAll(2048, {Signal(noise[0].end() - 512, noise[0].end())}, 512);
        CHECK((spectrum == fresh) == isForgotten);
    }
}

TEST_CASE("RealTimeFrequencyAnalyzer: the size follows its property, up to that of construction") {
    for (int size : {-1, 0, 1, 3, 64, 1000}) {
        Analyzer analyzer(size, nullptr);
        CHECK(analyzer.getMeasurement()->getSize() == FourierPlan::sizeFor(size));
    }
    Analyzer analyzer(1024, nullptr);
    Recording source({sine(16384, 0.125, 1.0), sine(16384, 0.125, 0.5)}, 100);
    for (const auto& [wanted, size] :
         {std::pair{1024, 1024}, {200, 256}, {-7, 4}, {512, 512}, {1 << 30, 1024}}) {
        INFO("size " << wanted);
        analyzer.fftSize.assign(wanted);
        const Signal spectrum = look(analyzer, source, 25);
        CHECK(spectrum.size() == static_cast<std::size_t>(size / 2 + 1));
        if (size >= 256)
            CHECK(*std::max_element(spectrum.begin(), spectrum.end()) ==
                  doctest::Approx(1.0).epsilon(0.2));  // an onset may be in it
    }
}

TEST_CASE("RealTimeFrequencyAnalyzer: samples that are no numbers leave the spectrum usable") {
    Signal x = sine(2048, 0.125, 1.0);
    x[100] = std::numeric_limits<float>::quiet_NaN();
    x[200] = -std::numeric_limits<float>::infinity();
    const Signal spectrum = lookAtAll(1024, {x});
    CHECK(spectrum[128] == doctest::Approx(1.0).epsilon(0.01));
    CHECK(std::all_of(spectrum.begin(), spectrum.end(), [](float m) { return std::isfinite(m); }));
}

TEST_CASE("RealTimeFrequencyAnalyzer: shows what the graph has handed over") {
    class Tone final : public wave::Source {
    public:
        using Source::Source;
        void render(wave::BasicBlock<float>* block, int numSamples, unsigned) noexcept override {
            for (int i = 0; i < numSamples; ++i)
                block->data()[i] = static_cast<float>(
                    0.5 * std::sin(std::numbers::pi * 0.125 *
                                   static_cast<double>(environment->getPosition() + i)));
        }
    };
    wave::Environment environment;
    Tone tone(&environment);
    constexpr auto layout = RealTimeAudioBuffer::getFrameLayout();
    RealTimeAudioBuffer buffer(&environment, &tone, 2, layout.frameSize, layout.frameCount);
    Analyzer analyzer;
    analyzer.getMeasurement()->setSource(buffer.createMeasurement());
    for (int i = 0; i < 100; ++i) {
        environment.beginBlock();
        environment.render(93, 0);
    }
    analyzer.getMeasurement()->lock();
    CHECK(analyzer.getMeasurement()->getFrameId() == 9300 / 512);
    CHECK(analyzer.getMeasurement()->getValues()[128] == doctest::Approx(0.5).epsilon(1e-3));
    analyzer.getMeasurement()->unlock();
}

}  // namespace
}  // namespace cinder
