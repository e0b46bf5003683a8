#pragma once

#include "distortion/tone/FilterChain.h"
#include "wave/Forwarders.h"

namespace cinder {

/// Up to four equalisers in a row.
/// Shape   one channel; with no filter in use it hands its input on and computes nothing
/// Range   gains of -30..30 dB, where somebody else provides them as well
/// State   that of its FilterChain
class EQStage final : public wave::Filter {
public:
    static constexpr int maxFilters = 4;

    explicit EQStage(wave::Environment* environment);

    void clear() noexcept CINDER_REALTIME { filters.clear(); }  ///< [audio]
    /// [audio]
    void addFilter(const FilterRow& row) noexcept CINDER_REALTIME { filters.addFilter(row); }
    void link(EQStage& other) { filters.link(other.filters); }

    int getCount() const { return filters.getCount(); }
    EQFilter& filter(int index) { return filters[index]; }
    /// The gain of one filter, to be pointed at whatever moves it.
    wave::FloatParameterBus& gainBus(int index) { return filters[index].gain; }

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    wave::InputForwarder inputForwarder;
    FilterChain filters;
};

}  // namespace cinder
