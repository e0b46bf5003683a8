#pragma once

#include "core/simd/KernelTable.h"
#include "dsp/sr/HalfBandStage.h"

namespace cinder::sr {

/// Where a channel's block and state lie.
struct Channel {
    float* state;        // slots of four floats, in the order in which the block runs
    float* saved;        // decimator only: last input of each stage, the 2x stage's first
    const float* input;  // does not overlap the output
    float* output;
};

inline constexpr int maxGroup = 8;

/// Converts channels together, each in lanes of its own: what comes out of one has the same bits
/// alone and in any company. A channel may stand in several places of a group.
using ConvertGroup = void (*)(const HalfBandStage* stages, const Channel* group,
                              int numBaseSamples) noexcept;

/// Rows: groups of 2, 4 and 8 channels; null where they fill more than a register of the set.
/// Columns: cascadeShape().
inline constexpr int numGroupSizes = 3;
inline constexpr int numCascadeShapes = 9;
using GroupKernels = ConvertGroup[numGroupSizes][numCascadeShapes];

struct CascadeKernels {
    GroupKernels interpolate;
    GroupKernels decimate;
};

/// A long stage has three pairs of sections, a short one two, of which the last is a lone section.
/// Long ones come first, so that their number and that of all stages tell the whole shape.
constexpr int cascadeShape(int numStages, int numLongStages) noexcept CINDER_REALTIME {
    return numStages * (numStages + 1) / 2 - 1 + numLongStages;
}
static_assert(cascadeShape(1, 0) == 0);
static_assert(cascadeShape(maxStages, maxStages) == numCascadeShapes - 1);

CINDER_KERNELS(CascadeKernels, cascadeKernels)

}  // namespace cinder::sr
