#include "dsp/sr/CascadeKernels.h"

#include "dsp/sr/StageLanes.h"

// A whole cascade runs in one pass over the block, with all its state in registers: a stage hands
// its results on as they come, so no sample between the stages goes through memory, and the chains
// of sections that wait for one another overlap.

namespace cinder::sr::CINDER_SIMD_SET {

namespace {

template <class Pointer, int channels>
struct Pointers {
    CINDER_LANES Pointers(const Channel* group, Pointer Channel::*which) {
        for (int c = 0; c < channels; ++c)
            ofChannel[c] = group[c].*which;
    }
    CINDER_LANES operator const Pointer*() const { return ofChannel; }

    Pointer ofChannel[channels];
};

/// Raises the rate by the stages from number `index` upward.
template <int channels, int numStages, int numLong, int index = 0>
struct Interpolator {
    using V = Branches<channels>;
    using Memory = ChannelMemory<channels>;
    using This = Stage<channels, (index < numLong)>;
    static constexpr int halfFactor = 1 << (numStages - index - 1);

    CINDER_LANES void load(const HalfBandStage* stages, float* const* states, int slot = 0) {
        stage.load(stages[index], states, slot);
        next.load(stages, states, slot + This::numSlots);
    }
    CINDER_LANES void store(float* const* states, int slot = 0) const {
        stage.store(states, slot);
        next.store(states, slot + This::numSlots);
    }
    /// A sample of each channel, in both its lanes, through this stage.
    CINDER_LANES V advance(V x) { return stage.advance(x); }
    /// What came out of this stage, through the next ones and to the output.
    CINDER_LANES void handOn(V y, float* const* out, std::ptrdiff_t at) {
        const V early = arrange<placeA>(y, y);
        const V late = arrange<placeB>(y, y);
        if constexpr (halfFactor == 1) {
            Memory::storePair(y, out, at);
        } else if constexpr (halfFactor == 2) {
            const V first = next.advance(early);
            Memory::storeTwoPairs({first, next.advance(late)}, out, at);
        } else {
            next.handOn(next.advance(early), out, at);
            next.handOn(next.advance(late), out, at + halfFactor);
        }
    }

    This stage;
    Interpolator<channels, numStages, numLong, index + 1> next;
};

template <int channels, int numStages, int numLong>
struct Interpolator<channels, numStages, numLong, numStages> {
    CINDER_LANES void load(const HalfBandStage*, float* const*, int) {}
    CINDER_LANES void store(float* const*, int) const {}
};

/// Lowers the rate by the stages from the highest one down to number `index`. A sample between two
/// stages exists as the two lanes whose sum it is.
template <int channels, int numStages, int numLong, int index = 0>
struct Decimator {
    using V = Branches<channels>;
    using Memory = ChannelMemory<channels>;
    using This = Stage<channels, (index < numLong)>;
    using Above = Decimator<channels, numStages, numLong, index + 1>;
    static constexpr int halfFactor = 1 << (numStages - index - 1);
    static constexpr bool isHighest = halfFactor == 1;
    static constexpr int firstSlot = Above::numSlots;
    static constexpr int numSlots = firstSlot + This::numSlots;

    CINDER_LANES void load(const HalfBandStage* stages, float* const* states, float* const* saved) {
        above.load(stages, states, saved);
        stage.load(stages[index], states, firstSlot);
        odd = Memory::loadBoth(saved, index);
        if constexpr (!isHighest) odd = arrange<placeAB>(odd, V(-0.0f));  // keeps the sign of a 0
    }
    CINDER_LANES void store(float* const* states, float* const* saved) const {
        above.store(states, saved);
        stage.store(states, firstSlot);
        Memory::storeA(isHighest ? swapped(odd) : sumOfBranches(odd), saved, index);
    }
    CINDER_LANES V advance(V x) { return stage.advance(x); }

    /// The input of the stage's branches: an even sample and the odd one before it, halved. The
    /// highest stage takes pairs of samples, an even and an odd one.
    CINDER_LANES V joinPair(V pair) {
        const V x = arrange<placeAB>(pair, odd);
        odd = pair;
        return x * 0.5f;
    }
    CINDER_LANES V join(V even) const {
        return (arrange<placeAB>(even, odd) + swapped(arrange<placeAB>(odd, even))) * 0.5f;
    }
    /// The same, from the input of the whole cascade.
    CINDER_LANES V take(const float* const* in, std::ptrdiff_t at) {
        if constexpr (isHighest) {
            return joinPair(Memory::loadPair(in, at));
        } else if constexpr (halfFactor == 2) {
            const auto pairs = Memory::loadTwoPairs(in, at);
            const V x = join(above.advance(above.joinPair(pairs.first)));
            odd = above.advance(above.joinPair(pairs.second));
            return x;
        } else {
            const V x = join(above.advance(above.take(in, at)));
            odd = above.advance(above.take(in, at + halfFactor));
            return x;
        }
    }

    Above above;
    This stage;
    V odd;  // the last odd sample from above; of the highest stage the last pair
};

template <int channels, int numStages, int numLong>
struct Decimator<channels, numStages, numLong, numStages> {
    static constexpr int numSlots = 0;
    CINDER_LANES void load(const HalfBandStage*, float* const*, float* const*) {}
    CINDER_LANES void store(float* const*, float* const*) const {}
};

// In both loops the lowest stage works on one base sample while the others are busy with its
// neighbour. Neither waits for the other, and more of the processor's units find work at a time.

template <int channels, int numStages, int numLong>
void interpolate(const HalfBandStage* stages, const Channel* group, int numBaseSamples) noexcept {
    using Memory = ChannelMemory<channels>;
    using V = Branches<channels>;
    const Pointers<float*, channels> states(group, &Channel::state);
    const Pointers<const float*, channels> in(group, &Channel::input);
    const Pointers<float*, channels> out(group, &Channel::output);
    Interpolator<channels, numStages, numLong> up;
    up.load(stages, states);
    V ahead = up.advance(Memory::loadBoth(in, 0));
    for (std::ptrdiff_t i = 0; i < numBaseSamples;) {
        const V y = ahead;
        const std::ptrdiff_t at = i++ << numStages;
        if (i < numBaseSamples) ahead = up.advance(Memory::loadBoth(in, i));
        up.handOn(y, out, at);
    }
    up.store(states);
}

template <int channels, int numStages, int numLong>
void decimate(const HalfBandStage* stages, const Channel* group, int numBaseSamples) noexcept {
    using Memory = ChannelMemory<channels>;
    using V = Branches<channels>;
    const Pointers<float*, channels> states(group, &Channel::state);
    const Pointers<float*, channels> saved(group, &Channel::saved);
    const Pointers<const float*, channels> in(group, &Channel::input);
    const Pointers<float*, channels> out(group, &Channel::output);
    Decimator<channels, numStages, numLong> down;
    down.load(stages, states, saved);
    V ahead = down.take(in, 0);
    for (std::ptrdiff_t i = 0; i < numBaseSamples;) {
        const V x = ahead;
        const std::ptrdiff_t at = i++;
        if (i < numBaseSamples) ahead = down.take(in, i << numStages);
        Memory::storeA(sumOfBranches(down.advance(x)), out, at);
    }
    down.store(states, saved);
}

/// The kernels for groups of one size.
template <int channels>
constexpr void fillRow(CascadeKernels& kernels, int row) {
    if constexpr (2 * channels <= simd::CINDER_SIMD_SET::wideLanes) {
        const auto fill = [&]<int numStages, int... numLong>(
            std::integer_sequence<int, numStages>, std::integer_sequence<int, numLong...>) {
            ((kernels.interpolate[row][cascadeShape(numStages, numLong)] =
                  interpolate<channels, numStages, numLong>),
             ...);
            ((kernels.decimate[row][cascadeShape(numStages, numLong)] =
                  decimate<channels, numStages, numLong>),
             ...);
        };
        fill(std::integer_sequence<int, 1>(), std::make_integer_sequence<int, 2>());
        fill(std::integer_sequence<int, 2>(), std::make_integer_sequence<int, 3>());
        fill(std::integer_sequence<int, 3>(), std::make_integer_sequence<int, 4>());
    }
}

constexpr CascadeKernels makeKernels() {
    CascadeKernels kernels = {};
    fillRow<2>(kernels, 0);
    fillRow<4>(kernels, 1);
    fillRow<8>(kernels, 2);
    return kernels;
}

}  // namespace

constinit const CascadeKernels cascadeKernels = makeKernels();

}  // namespace cinder::sr::CINDER_SIMD_SET
