#pragma once

#include "dsp/sr/BranchLanes.h"
#include "dsp/sr/HalfBandStage.h"

// The sections of one stage, with their state in registers; included by kernel sources alone.

namespace cinder::sr::CINDER_SIMD_SET {

/// One section of each branch of each channel:
///   y[n] = (c x[n] + x[n-1]) - c y[n-1]
/// Both products may fuse with the sum they stand in. In this form an output waits for one product
/// and sum behind the last output; c (x[n] - y[n-1]) + x[n-1] would wait for a difference as well.
template <int channels>
struct SectionPair {
    using V = Branches<channels>;
    using Memory = ChannelMemory<channels>;

    CINDER_LANES void load(const float* coefficients, float* const* states, int slot) {
        c = Memory::repeatPair(coefficients);
        minusC = -c;
        const V ofA = Memory::loadPair(states, 4 * slot);
        const V ofB = Memory::loadPair(states, 4 * slot + 2);
        x1 = arrange<placeAA>(ofA, ofB);
        y1 = arrange<placeBB>(ofA, ofB);
    }
    CINDER_LANES void store(float* const* states, int slot, bool isLone) const {
        Memory::storePair(arrange<placeAA>(x1, y1), states, 4 * slot);
        if (!isLone) Memory::storePair(arrange<placeBB>(x1, y1), states, 4 * slot + 2);
    }
    CINDER_LANES V advance(V x) {
        const V y = mulAdd(minusC, y1, mulAdd(c, x, x1));
        x1 = x;
        y1 = y;
        return y;
    }

    V c, minusC, x1, y1;
};

/// The sections of a stage. Where the last one stands alone on A, the lane of B passes it by.
template <int channels, bool isLong>
struct Stage;

template <int channels>
struct Stage<channels, false> {
    using V = Branches<channels>;
    static constexpr int numSlots = 2;

    CINDER_LANES void load(const HalfBandStage& stage, float* const* states, int slot) {
        pair.load(stage.coefficients, states, slot);
        lone.load(stage.coefficients + 2, states, slot + 1);
    }
    CINDER_LANES void store(float* const* states, int slot) const {
        pair.store(states, slot, false);
        lone.store(states, slot + 1, true);
    }
    CINDER_LANES V advance(V x) {
        const V y = pair.advance(x);
        return arrange<placeAB>(lone.advance(y), y);
    }

    SectionPair<channels> pair, lone;
};

template <int channels>
struct Stage<channels, true> {
    using V = Branches<channels>;
    static constexpr int numSlots = 3;

    CINDER_LANES void load(const HalfBandStage& stage, float* const* states, int slot) {
        first.load(stage.coefficients, states, slot);
        second.load(stage.coefficients + 2, states, slot + 1);
        last.load(stage.coefficients + 4, states, slot + 2);
        hasSection = last.c > V(0.0f);
    }
    CINDER_LANES void store(float* const* states, int slot) const {
        first.store(states, slot, false);
        second.store(states, slot + 1, false);
        last.store(states, slot + 2, !hasSection[1]);
    }
    CINDER_LANES V advance(V x) {
        const V y = second.advance(first.advance(x));
        return select(hasSection, last.advance(y), y);
    }

    SectionPair<channels> first, second, last;
    typename V::Mask hasSection;
};

}  // namespace cinder::sr::CINDER_SIMD_SET
