#pragma once

#include "core/simd/Lanes.h"

namespace cinder::simd::CINDER_SIMD_SET {

/// out[i] = f(in[i]) for i from 0 to n - 1, as many lanes at a time as a Unit has: a register, or a
/// Pair of them where f is one long chain.
/// Shape   any n, any alignment; out may be in; writes out[0] to out[n - 1] and nothing else
/// Range   f takes and gives a Unit, and no lane of its result depends on another
/// State   none: the same bits for any cut of the block
template <class Unit = Wide, class Function>
CINDER_LANES void mapBlock(const float* in, float* out, int n, Function f) {
    constexpr int width = Unit::numLanes;
    // A block shorter than a unit is worked on in a copy.
    float few[width] = {};
    const bool isShort = n < width;
    for (int i = 0; isShort && i < n; ++i)
        few[i] = in[i];
    const float* from = isShort ? few : in;
    float* to = isShort ? few : out;
    const int lastStart = isShort ? 0 : n - width;

    // What remains at the end is covered by a last unit that overlaps its predecessor and repeats
    // its results. It is read first, since `to` may be `from`.
    const Unit last = Unit::load(from + lastStart);
    int i = 0;
    for (; i <= lastStart; i += width)
        f(Unit::load(from + i)).store(to + i);
    if (i < n) f(last).store(to + lastStart);

    for (i = 0; isShort && i < n; ++i)
        out[i] = few[i];
}

/// out[i] = f(in[i], ...) over any number of inputs, with the promises of mapBlock.
template <class Function, class... Inputs>
CINDER_LANES void mapBlocks(float* out, int n, Function f, const Inputs*... in) {
    if (n < wideLanes) {
        for (int i = 0; i < n; ++i) {
            float few[wideLanes];
            f(Wide(in[i])...).store(few);
            out[i] = few[0];
        }
        return;
    }
    // The last register may overlap its predecessor. What it needs is worked out first, since the
    // output may be one of the inputs.
    const int lastStart = n - wideLanes;
    const Wide last = f(Wide::load(in + lastStart)...);
    int i = 0;
    for (; i <= lastStart; i += wideLanes)
        f(Wide::load(in + i)...).store(out + i);
    if (i < n) last.store(out + lastStart);
}

}  // namespace cinder::simd::CINDER_SIMD_SET
