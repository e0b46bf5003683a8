// What the display costs: on the audio thread, the hand-over of stereo blocks with a reader and,
// once all frames are full, without one; on the interface's, a spectrum per hop of 512 samples, and
// in it the Fourier transform of one channel alone.
#include <algorithm>
#include <memory>
#include <vector>

#include "analysis/buffer/RealTimeAudioBuffer.h"
#include "analysis/spectrum/RealTimeFrequencyAnalyzer.h"
#include "support/BlockBenchmark.h"

namespace {

using namespace cinder;

constexpr int channels = 2, size = 2048, hop = size / 4;

class Silence final : public wave::Source {
public:
    using Source::Source;
    void render(wave::BasicBlock<float>*, int, unsigned) noexcept override {}
};

struct Graph {
    static constexpr auto layout = RealTimeAudioBuffer::getFrameLayout();

    void run(int numSamples) {
        environment.beginBlock();
        environment.render(numSamples, 0);
    }

    wave::Environment environment;
    Silence silence{&environment};
    RealTimeAudioBuffer buffer{&environment, &silence, channels, layout.frameSize,
                               layout.frameCount};
    RealTimeAudioBuffer::Measurement* measurement = buffer.createMeasurement();
};

void handOver(benchmark::State& state, int blockSize, bool hasReader) {
    Graph graph;
    int waiting = 0;
    bench::measureBlocks(state, channels * blockSize, [&] {
        graph.run(blockSize);
        waiting += blockSize;
        if (!hasReader || waiting < 8 * hop) return;
        waiting = 0;
        graph.measurement->lock();
        graph.measurement->unlock();
    });
}

void spectrum(benchmark::State& state) {
    Graph graph;
    RealTimeFrequencyAnalyzer analyzer(size, nullptr);
    auto* const measurement = analyzer.getMeasurement();
    measurement->setSource(graph.measurement);
    bench::measureBlocks(state, channels * hop, [&] {
        graph.run(hop / 2);
        graph.run(hop / 2);
        measurement->lock();
        measurement->unlock();
    });
}

void transform(benchmark::State& state) {
    const FourierPlan plan(size);
    FourierTransform work(&plan);
    bench::measureBlocks(state, size, [&] {
        std::fill_n(work.begin(), size, 0.5f);
        work.run(plan.getTotalUnits());
    });
}

BENCHMARK_CAPTURE(handOver, blocks_of_256, 256, true)->UseManualTime();
BENCHMARK_CAPTURE(handOver, blocks_of_48, 48, true)->UseManualTime();
BENCHMARK_CAPTURE(handOver, no_reader, 256, false)->UseManualTime();
BENCHMARK(spectrum)->UseManualTime();
BENCHMARK(transform)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
