#pragma once

#include "cinder/bench/BenchRows.h"
#include "processor/CinderProcessor.h"

#include <array>
#include <cstdint>
#include <optional>
#include <random>
#include <vector>

namespace cinder {

/// The product in the state of a row, in stereo at 48 kHz, played block after block.
/// State   that of the processor, and a place in the music, which begins anew after some seconds
/// Errors  std::logic_error for a setting that the product does not know
class ProductRun {
public:
    static constexpr float sampleRate = 48000.0f;

    ProductRun(const BenchRow& row, int blockSize);

    /// Until ramps, fades and the first notes of the music are over, or the silence is.
    void settle();
    /// Before each block from here on, gives random values to some of the parameters.
    void automate(std::uint32_t randomSeed) { random.emplace(randomSeed); }
    void playBlock();
    int getBlockSize() const { return blockSize; }

private:
    void apply(const BenchRow::Setting& setting);

    static constexpr int numChannels = 2;
    void setRandomly();

    const int blockSize;
    const double settleSeconds;
    CinderProcessor processor;
    std::array<std::vector<float>, numChannels> music, heard;
    std::size_t position = 0;
    std::optional<std::minstd_rand> random;
};

}  // namespace cinder
