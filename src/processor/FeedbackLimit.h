#pragma once

#include "core/Realtime.h"

namespace cinder {

class ModulationMatrix;

/// How long a sub-block may be: no longer than the shortest feedback loop of the first `numBands`,
/// less what the converters take of it, since a loop reads what earlier blocks have written. A
/// multiple of 4, at least 4, at most the environment's longest block. [audio]
int longestSubBlock(const ModulationMatrix& matrix, int numBands,
                    int converterLatency) noexcept CINDER_REALTIME;

}  // namespace cinder
