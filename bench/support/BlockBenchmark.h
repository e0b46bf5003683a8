#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <vector>

namespace cinder::bench {

/// Measures work that handles one block of `numSamples` in turns with a memcpy of a block of that
/// size: every iteration is a batch of the one and a batch of the other, so that both see the same
/// clock and the same neighbours. The benchmark needs UseManualTime(); its column Time is that of
/// a batch. Reports
///   ns/sample   of the work, mean
///   x_memcpy    work over memcpy, median over the iterations
template <class Work>
void measureBlocks(benchmark::State& state, int numSamples, Work work) {
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;
    constexpr int batch = 64;  // long beside a reading of the clock
    const auto size = static_cast<std::size_t>(numSamples);
    std::vector<float> from(size, 0.5f), to(size);
    std::vector<double> ratios;
    double total = 0.0;
    for ([[maybe_unused]] auto iteration : state) {
        const auto start = Clock::now();
        for (int i = 0; i < batch; ++i) {
            work();
            benchmark::ClobberMemory();
        }
        const auto between = Clock::now();
        for (int i = 0; i < batch; ++i) {
            benchmark::DoNotOptimize(from.data());
            std::memcpy(to.data(), from.data(), size * sizeof(float));
            benchmark::DoNotOptimize(to.data());
            benchmark::ClobberMemory();
        }
        const Seconds worked = between - start, copied = Clock::now() - between;
        state.SetIterationTime(worked.count());
        ratios.push_back(worked / copied);
        total += worked.count();
    }
    std::nth_element(ratios.begin(), ratios.begin() + ratios.size() / 2, ratios.end());
    const double numWorked = static_cast<double>(state.iterations()) * batch * numSamples;
    state.counters["ns/sample"] = total * 1e9 / numWorked;
    state.counters["x_memcpy"] = ratios[ratios.size() / 2];
}

}  // namespace cinder::bench
