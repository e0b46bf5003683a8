#pragma once

#include "cinder/audio/AudioReader.h"

#include <vector>

namespace cinder {

/// Another reader in mono: the mean of its channels.
/// State   that of the source, which alone this reader may read from
/// Errors  those of the source
class MonoReader final : public AudioReader {
public:
    explicit MonoReader(AudioReader& source) : source(source) {}

    int read(std::span<float* const> channels, int maxFrames) override;

    int numChannels() const override { return 1; }
    int sampleRate() const override { return source.sampleRate(); }
    std::int64_t numFrames() const override { return source.numFrames(); }

private:
    AudioReader& source;
    std::vector<float> second;
};

}  // namespace cinder
