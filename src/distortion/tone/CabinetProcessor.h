#pragma once

#include <cstdint>

#include "distortion/tone/FilterChain.h"
#include "wave/Delay.h"
#include "wave/Forwarders.h"

namespace cinder {

/// One echo of a cabinet.
struct TapRow {
    float ms;
    float gain;
};

/// A loudspeaker's box: a few echoes from inside it, then up to six filters.
/// Shape   one channel; empty it hands its input on and computes nothing
/// State   that of its MultiDelay and its FilterChain
class CabinetProcessor final : public wave::FilterBase {
public:
    static constexpr int maxFilters = 6;

    /// Adds echoes of the input to it: y[n] = x[n] + sum of gain_i * x[n - delay_i].
    /// Shape   one channel; without taps it hands its input on, likewise silence once the taps have
    ///         nothing else either
    /// Range   up to 6 taps of up to 10 ms, cut to whole samples
    /// State   the last 10 ms; forgotten by reset(), when taps are installed, and where the time
    ///         line jumps. Same result for any cut of the block
    class MultiDelay final : public wave::Filter {
    public:
        static constexpr int maxTaps = 6;

        explicit MultiDelay(wave::Environment* environment);

        void clear() noexcept CINDER_REALTIME { count = 0; }  ///< [audio]
        /// [audio]
        void addTap(const TapRow& tap) noexcept CINDER_REALTIME;
        /// Allocates where the sample rate has changed. [audio]
        void reset() noexcept CINDER_REALTIME override;

        int getCount() const { return count; }

    protected:
        void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                     unsigned flags) noexcept CINDER_REALTIME override;

    private:
        std::int32_t samplesOf(double milliseconds) const noexcept CINDER_REALTIME;

        TapRow taps[maxTaps] = {};
        int count = 0;
        wave::Delay delay;  // all taps read the same past
        wave::BasicBlock<float> scratch;
        std::uint64_t expectedPosition = 0;
        int silentSamples = 0;  // written last; more than the longest tap says no more
    };

    explicit CabinetProcessor(wave::Environment* environment);

    /// Takes all taps and filters out of use. [audio]
    void clear() noexcept CINDER_REALTIME {
        multiDelay.clear();
        filters.clear();
    }
    /// [audio]
    void addTap(const TapRow& tap) noexcept CINDER_REALTIME { multiDelay.addTap(tap); }
    /// [audio]
    void addFilter(const FilterRow& row) noexcept CINDER_REALTIME { filters.addFilter(row); }
    void link(CabinetProcessor& other) { filters.link(other.filters); }

    int getNumTaps() const { return multiDelay.getCount(); }
    int getCount() const { return filters.getCount(); }

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

private:
    wave::InputForwarder inputForwarder;
    MultiDelay multiDelay;
    FilterChain filters;
};

}  // namespace cinder
