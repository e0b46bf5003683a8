#pragma once

#include <array>
#include <cstdint>

#include "wave/Producer.h"

namespace cinder {

/// The levels of signals above -60 dB, e = max(0, 20 log10 |x| + 60), block by block. Followers of
/// the same signal share them, so that its logarithms are taken once.
/// Shape   any producer that has been pulled in the present cycle; a silent block takes no
///         logarithm
/// Range   a NaN is silence; never infinite
/// State   the levels of the last two blocks that were asked for
/// Errors  none
class FollowerLevels final {
public:
    struct Levels {
        const float* samples;
        bool areZero;
    };

    explicit FollowerLevels(wave::Environment* environment);

    Levels of(const wave::Producer& signal, int numSamples) noexcept CINDER_REALTIME;  ///< [audio]

private:
    struct Entry {
        explicit Entry(wave::Environment* environment) : block(environment) {}
        wave::BasicBlock<float> block;
        const float* signal = nullptr;  // the samples whose levels these are
        std::uint32_t blockId = 0;
        int numSamples = 0;
        bool isSilent = false;
    };

    void fill(Entry& entry, const wave::Producer& signal) noexcept CINDER_REALTIME;

    wave::Environment* const environment;
    // The main input and the side chain; a fade between them has a block of its own, and no other
    // follower shares it.
    std::array<Entry, 2> entries;
    std::size_t oldest = 0;
};

}  // namespace cinder
