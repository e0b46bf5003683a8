#include "distortion/drive/GainKernels.h"

#include "core/simd/MapBlock.h"

namespace cinder::CINDER_SIMD_SET {

namespace {

using namespace simd::CINDER_SIMD_SET;

/// Between the two values that lie next to each lane's drive.
CINDER_LANES Wide lookup(const GainTable& table, Wide drive) {
    const Wide t = min(max(drive, Wide(0.0f)), Wide(1.0f)) * table.scale;
    const IntLanes<wideLanes> whole = truncate(t);
    const auto places = whole & table.mask;
    const Wide from = gather(table.values, places);
    return from + (gather(table.values + 1, places) - from) * (t - toFloat(whole));
}

void applyTable(const GainTable& table, const float* drive, const float* in, float* out,
                int n) noexcept {
    mapBlocks(
        out,
        n, [table](Wide d, Wide x) __attribute__((always_inline)) { return x * lookup(table, d); },
        drive, in);
}

}  // namespace

constinit const GainKernels gainKernels = {applyTable};

}  // namespace cinder::CINDER_SIMD_SET
