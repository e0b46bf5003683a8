#pragma once

#include <cstddef>
#include <utility>

#include "core/simd/Lanes.h"

// How signals lie in the vectors of the conversion kernels; included by kernel sources alone.

namespace cinder::sr::CINDER_SIMD_SET {

using simd::CINDER_SIMD_SET::BasicLanes;
using simd::CINDER_SIMD_SET::DoubleLanes;
using simd::CINDER_SIMD_SET::Lanes;
using simd::CINDER_SIMD_SET::shuffle;

/// For each channel in turn a lane of branch A and one of branch B. Behind a stage that raises the
/// rate these are two successive samples of the channel, the earlier one first.
template <int channels>
using Branches = Lanes<2 * channels>;

/// Lane i of the result is lane place(i, N) of the two together, of which a's are numbered from 0
/// and b's from N.
template <auto place, class T, int N, int... i>
CINDER_LANES BasicLanes<T, N> arrange(BasicLanes<T, N> a, BasicLanes<T, N> b,
                                      std::integer_sequence<int, i...>) {
    return shuffle<place(i, N)...>(a, b);
}
template <auto place, class T, int N>
CINDER_LANES BasicLanes<T, N> arrange(BasicLanes<T, N> a, BasicLanes<T, N> b) {
    return arrange<place>(a, b, std::make_integer_sequence<int, N>());
}

// placeXY: X of the first in the lane of A, Y of the second in the lane of B; placeX: X in both.
constexpr int placeA(int i, int) {
    return i & ~1;
}
constexpr int placeB(int i, int) {
    return i | 1;
}
constexpr int placeAA(int i, int n) {
    return i % 2 ? n + i - 1 : i;
}
constexpr int placeAB(int i, int n) {
    return i % 2 ? n + i : i;
}
constexpr int placeBB(int i, int n) {
    return i % 2 ? n + i : i + 1;
}
constexpr int placeSwapped(int i, int) {
    return i ^ 1;
}

template <int N>
CINDER_LANES Lanes<N> swapped(Lanes<N> v) {
    return arrange<placeSwapped>(v, v);
}
/// The sum of both branches in both lanes.
template <int N>
CINDER_LANES Lanes<N> sumOfBranches(Lanes<N> v) {
    return v + swapped(v);
}

template <int N, int... i>
CINDER_LANES Lanes<2 * N> concatenate(Lanes<N> a, Lanes<N> b, std::integer_sequence<int, i...>) {
    return shuffle<i...>(a, b);
}

/// The way of branches to and from memory, where each channel has a block of its own.
template <int channels>
class ChannelMemory {
    using V = Branches<channels>;
    using Pairs = DoubleLanes<channels>;  // two floats on their way, never calculated with
    static constexpr std::make_integer_sequence<int, channels> all{};

public:
    struct TwoPairs {
        V first, second;
    };

    /// One float of each channel, in both its lanes.
    static CINDER_LANES V loadBoth(const float* const* from, std::ptrdiff_t at) {
        return loadBoth<0, channels>(from, at);
    }
    static CINDER_LANES void storeA(V v, float* const* to, std::ptrdiff_t at) {
        for (int c = 0; c < channels; ++c)
            to[c][at] = v[2 * c];
    }

    /// Two successive floats of each channel.
    static CINDER_LANES V loadPair(const float* const* from, std::ptrdiff_t at) {
        return loadPair(from, at, all);
    }
    static CINDER_LANES void storePair(V v, float* const* to, std::ptrdiff_t at) {
        const auto pairs = __builtin_bit_cast(typename Pairs::Raw, v.raw);
        for (int c = 0; c < channels; ++c) {
            const double pair = pairs[c];
            __builtin_memcpy(to[c] + at, &pair, sizeof(pair));
        }
    }
    /// The same two floats for each channel.
    static CINDER_LANES V repeatPair(const float* from) {
        const float* same[channels];
        for (const float*& one : same)
            one = from;
        return loadPair(same, 0);
    }

    /// Four successive floats of each channel.
    static CINDER_LANES TwoPairs loadTwoPairs(const float* const* from, std::ptrdiff_t at) {
        const Pairs even(asPairs(loadQuads<0, channels>(from, at)));
        const Pairs odd(asPairs(loadQuads<1, channels>(from, at)));
        return {asFloats(arrange<placeAA>(even, odd)), asFloats(arrange<placeBB>(even, odd))};
    }
    static CINDER_LANES void storeTwoPairs(TwoPairs v, float* const* to, std::ptrdiff_t at) {
        const Pairs first = asPairs(v.first);
        const Pairs second = asPairs(v.second);
        storeQuads<0>(asFloats(arrange<placeAA>(first, second)), to, at);
        storeQuads<1>(asFloats(arrange<placeBB>(first, second)), to, at);
    }

private:
    static CINDER_LANES Pairs asPairs(V v) {
        return Pairs(__builtin_bit_cast(typename Pairs::Raw, v.raw));
    }
    static CINDER_LANES V asFloats(Pairs p) {
        return V(__builtin_bit_cast(typename V::Raw, p.raw));
    }

    template <int first, int count>
    static CINDER_LANES auto loadBoth(const float* const* from, std::ptrdiff_t at) {
        if constexpr (count == 1) {
            return V(from[first][at]);
        } else {
            constexpr auto place = [](int i, int n) {
                return i / 2 < first + count / 2 ? i : n + i;
            };
            return arrange<place>(loadBoth<first, count / 2>(from, at),
                                  loadBoth<first + count / 2, count / 2>(from, at));
        }
    }
    template <int... c>
    static CINDER_LANES V loadPair(const float* const* from, std::ptrdiff_t at,
                                   std::integer_sequence<int, c...>) {
        const auto pair = [at](const float* of) {
            double two;
            __builtin_memcpy(&two, of + at, sizeof(two));
            return two;
        };
        return asFloats(Pairs(typename Pairs::Raw{pair(from[c])...}));
    }
    /// Four floats of every second channel from `first` on.
    template <int first, int count>
    static CINDER_LANES Lanes<2 * count> loadQuads(const float* const* from, std::ptrdiff_t at) {
        if constexpr (count == 2)
            return Lanes<4>::load(from[first] + at);
        else
            return concatenate(loadQuads<first, count / 2>(from, at),
                               loadQuads<first + count / 2, count / 2>(from, at),
                               std::make_integer_sequence<int, 2 * count>());
    }
    template <int first, int c = first>
    static CINDER_LANES void storeQuads(V v, float* const* to, std::ptrdiff_t at) {
        if constexpr (c < channels) {
            constexpr int lane = 2 * (c - first);
            shuffle<lane, lane + 1, lane + 2, lane + 3>(v, v).store(to[c] + at);
            storeQuads<first, c + 2>(v, to, at);
        }
    }
};

}  // namespace cinder::sr::CINDER_SIMD_SET
