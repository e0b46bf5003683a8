#pragma once

#include "cinder/bench/BenchRows.h"
#include "processor/CinderProcessor.h"

#include <array>
#include <vector>

namespace cinder {

/// The product in the state of a row, in stereo at 48 kHz, played block after block.
/// State   that of the processor, and a place in the music, which begins anew after some seconds
/// Errors  std::logic_error for a setting that the product does not know
class ProductRun {
public:
    static constexpr float sampleRate = 48000.0f;

    ProductRun(const BenchRow& row, int blockSize);

    /// Until ramps, fades and the first notes of the music are over.
    void settle();
    void playBlock();
    int getBlockSize() const { return blockSize; }

private:
    void apply(const BenchRow::Setting& setting);

    static constexpr int numChannels = 2;
    const int blockSize;
    CinderProcessor processor;
    std::array<std::vector<float>, numChannels> music, heard;
    std::size_t position = 0;
};

}  // namespace cinder
