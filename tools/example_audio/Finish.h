#pragma once

#include "example_audio/Loop.h"

#include <vector>

namespace cinder::example {

/// The loop as it goes into a file, one vector per channel: no DC, a peak of -3 dBFS, and ends that
/// are faded just enough to start and stop without a click. Mono is the mean of both sides.
std::vector<std::vector<float>> finished(Loop loop, int numChannels);

}  // namespace cinder::example
