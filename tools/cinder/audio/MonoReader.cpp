#include "cinder/audio/MonoReader.h"

#include <cstddef>

namespace cinder {

int MonoReader::read(std::span<float* const> channels, int maxFrames) {
    if (source.numChannels() == 1) return source.read(channels, maxFrames);
    second.resize(static_cast<std::size_t>(maxFrames));
    float* const both[] = {channels[0], second.data()};
    const int got = source.read(both, maxFrames);
    for (int i = 0; i < got; ++i)
        channels[0][i] = 0.5f * (channels[0][i] + second[static_cast<std::size_t>(i)]);
    return got;
}

}  // namespace cinder
