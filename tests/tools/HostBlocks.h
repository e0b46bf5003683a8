#pragma once

#include "processor/frame/GenericPluginProcessor.h"

#include <vector>

namespace cinder::test {

/// One vector per channel.
using Channels = std::vector<std::vector<float>>;

/// Plays the input through a processor, in host blocks of the given sizes, repeated, each under the
/// real-time guard.
Channels playThrough(GenericPluginProcessor& processor, const Channels& input,
                     const std::vector<int>& blocks = {512});

}  // namespace cinder::test
