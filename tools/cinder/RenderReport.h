#pragma once

#include "cinder/audio/LevelMeter.h"

#include <cstdint>
#include <string>

namespace cinder {

/// What a rendering has come to, for people.
struct RenderReport {
    struct Side {
        std::string file;
        std::int64_t numFrames = 0;
        int sampleRate = 0;
        int numChannels = 0;
        LevelMeter levels;
    };

    Side in;
    Side out;
    std::string settings;
    int latencySamples = 0;
    double secondsTaken = 0.0;
    std::int64_t numClipped = 0;  // samples beyond what the output's format holds

    /// A few lines with aligned columns.
    std::string text() const;
};

}  // namespace cinder
