#include "cinder/measure/StyleMeasures.h"
#include "cinder/measure/StyleProbe.h"
#include "wave/BasicBlock.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <vector>

namespace cinder {

namespace {

constexpr int blockSize = 256;
constexpr int numBlocks = 16;  // a round: long beside a reading of the clock
constexpr int numRounds = 31;
constexpr int numCopies = 64;  // of the 16 blocks, as one copy is too short to time
constexpr float drive = 0.5f;

/// A compiler that sees no use for a copy leaves it out.
void keep(const float* samples) {
    asm volatile("" : : "r"(samples) : "memory");
}

template <class Work>
double secondsOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double copiesPerSample(StyleProbe& probe) {
    std::vector<float> in(blockSize * numBlocks);
    wave::BasicBlock<float> from(blockSize), to(blockSize);  // aligned as the blocks of a graph
    for (std::size_t i = 0; i < in.size(); ++i)  // the loudest near the middle of the band
        in[i] = 0.3f * std::sin(0.0490874f * static_cast<float>(i)) +
                0.1f * std::sin(1.1044662f * static_cast<float>(i));
    std::vector<double> ratios;
    for (int round = 0; round < numRounds; ++round) {
        const double played = secondsOf([&] { keep(probe.play(in).data()); });
        const double copied = secondsOf([&] {
            for (int i = 0; i < numBlocks * numCopies; ++i) {
                keep(from.data());
                std::memcpy(to.data(), from.data(),
                            static_cast<std::size_t>(to.size()) * sizeof(float));
                keep(to.data());
            }
        });
        ratios.push_back(played * numCopies / copied);
    }
    const auto middle = ratios.begin() + numRounds / 2;
    std::nth_element(ratios.begin(), middle, ratios.end());
    return *middle;
}

}  // namespace

StyleCost measureStyleCost(const StyleSet& styles, StyleId style, int sampleRate) {
    StyleCost cost{};
    for (int i = 0; i < 2; ++i) {
        StyleProbe probe(styles, {style, static_cast<double>(sampleRate), StyleMeasures::factors[i],
                                  drive, 1, true});
        cost.copies[i] = copiesPerSample(probe);
    }
    return cost;
}

}  // namespace cinder
