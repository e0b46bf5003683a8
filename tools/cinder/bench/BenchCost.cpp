#include "cinder/bench/BenchCost.h"

#include "cinder/bench/ProductRun.h"
#include "wave/BasicBlock.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <vector>

namespace cinder {

namespace {

using Clock = std::chrono::steady_clock;

// The yardstick: a copy of 256 floats that lie in the cache, the cheapest thing that touches a
// block at all. A turn of it is long beside a reading of the clock.
constexpr int yardstickSize = 256;
constexpr int numCopies = 1024;
constexpr int framesInTurn = 2048;
constexpr int fewestTurns = 5;

/// A compiler that sees no use for a copy leaves it out.
void keep(const float* samples) {
    asm volatile("" : : "r"(samples) : "memory");
}

template <class Work>
double secondsOf(Work work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double secondsOfCopy() {
    static const wave::BasicBlock<float> from(yardstickSize);
    static wave::BasicBlock<float> to(yardstickSize);
    return secondsOf([] {
               for (int i = 0; i < numCopies; ++i) {
                   keep(from.data());
                   std::memcpy(to.data(), from.data(), yardstickSize * sizeof(float));
                   keep(to.data());
               }
           }) /
           numCopies;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

BenchCost measureBenchCost(const BenchRow& row, int blockSize, double seconds) {
    ProductRun run(row, blockSize);
    run.settle();
    const int numBlocks = std::max(1, framesInTurn / blockSize);
    const double frames = static_cast<double>(numBlocks) * blockSize;
    std::vector<double> played, ratios;
    double total = 0.0;
    while (total < seconds || played.size() < fewestTurns) {
        const double turn = secondsOf([&] {
            for (int i = 0; i < numBlocks; ++i)
                run.playBlock();
        });
        total += turn;
        played.push_back(turn / frames);
        ratios.push_back(turn / frames * yardstickSize / secondsOfCopy());
    }
    const double perFrame = median(played);
    return {perFrame * 1e9, median(ratios), perFrame * static_cast<double>(ProductRun::sampleRate)};
}

}  // namespace cinder
