#pragma once

#include "example_audio/Loop.h"

namespace cinder::example {

struct ReverbRecipe {
    double size;          // 1 is a room of about 10 m
    double decaySeconds;  // to -60 dB
    double dampingHz;     // above it the tail dies faster
    double lowCutHz;      // below it nothing enters
    double preDelaySeconds;
};

/// The echo of `send`, going round the loop's end. Eight delay lines feed one another through a
/// Hadamard matrix.
Loop reverb(const Loop& send, const ReverbRecipe& recipe);

}  // namespace cinder::example
