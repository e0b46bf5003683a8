#pragma once

#include "cinder/audio/LevelMeter.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

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
    std::vector<std::pair<std::string, std::string>> with;  // what, and how it was set
    int latencySamples = 0;
    bool isLatencyTakenOut = true;
    double secondsTaken = 0.0;
    std::int64_t numClipped = 0;  // samples beyond what the output's format holds

    /// A few lines with aligned columns.
    std::string text() const;
};

}  // namespace cinder
