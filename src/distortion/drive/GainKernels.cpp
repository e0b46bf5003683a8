#include "distortion/drive/GainKernels.h"

#include "core/simd/MapBlock.h"

namespace cinder::CINDER_SIMD_SET {

namespace {

using namespace simd::CINDER_SIMD_SET;

/// Between the two values that lie next to each lane's drive.
CINDER_LANES Wide lookup(const GainTable& table, Wide drive) {
    const Wide t = min(max(drive, Wide(0.0f)), Wide(1.0f)) * table.scale;
    const IntLanes<wideLanes> whole = truncate(t);
    int places[wideLanes];
    (whole & table.mask).store(places);
    float below[wideLanes], above[wideLanes];
    for (int k = 0; k < wideLanes; ++k) {
        below[k] = table.values[places[k]];
        above[k] = table.values[places[k] + 1];
    }
    const Wide from = Wide::load(below);
    return from + (Wide::load(above) - from) * (t - toFloat(whole));
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
