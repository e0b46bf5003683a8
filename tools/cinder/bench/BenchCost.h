#pragma once

#include "cinder/bench/BenchRows.h"

namespace cinder {

/// What a row costs, as medians over many turns.
struct BenchCost {
    double nsPerFrame;   // of stereo
    double copies;       // times a memcpy, see BenchCost.cpp
    double shareOfCore;  // of one core that plays in real time, 0..1
};

/// Plays for `seconds`, in turns with the yardstick, so that both see the same clock and the same
/// neighbours.
BenchCost measureBenchCost(const BenchRow& row, int blockSize, double seconds);

}  // namespace cinder
