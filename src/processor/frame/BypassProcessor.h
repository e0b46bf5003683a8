#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "params/ChannelLayouts.h"
#include "processor/frame/GenericPluginProcessor.h"
#include "wave/Delay.h"
#include "wave/FloatParameter.h"

namespace cinder {

/// Renders one sub-block, and crossfades between the graph's output and the delayed input:
/// out = (dry - wet) * fade + wet.
///
/// Engaging fades to dry over 50 ms at once. Leaving lets the graph run for `latency` samples
/// first, to the end of the sub-block, so that it is filled when it becomes heard. While fade rests
/// at 1 the graph does not run at all; time goes on.
///
/// Shape   1..maxBlockSize samples a call; the dry signal is the input, delayed by the latency
/// Range   0 and 1 of the fade give the graph's output and the delayed input to the bit
/// State   the fade, one delay a channel, empty after a change of latency and after a reset
/// Errors  none; a latency above 256 samples allocates once when it first appears
class GenericPluginProcessor::BypassProcessor {
public:
    explicit BypassProcessor(GenericPluginProcessor* owner);

    void setBypassed(bool nowBypassed) noexcept CINDER_REALTIME;
    /// Ends a fade at the next sub-block, and forgets the delayed input.
    void reset() noexcept CINDER_REALTIME;
    void sampleRateChanged();

    void processBlock(float* const* outputs, int numChannels, int offset,
                      int numSamples) noexcept CINDER_REALTIME;

    bool isBypassed() const { return bypassed; }
    /// The graph's state is older than the present: cycles were skipped since it was last left.
    bool hasSkipped() const { return skipped; }
    std::int32_t getLatencyApplied() const { return latencyApplied; }

private:
    void updateDryDelays() noexcept CINDER_REALTIME;
    void clearDryDelays() noexcept CINDER_REALTIME;
    void updateFade(int numSamples) noexcept CINDER_REALTIME;
    void pullInputs(int numSamples) noexcept CINDER_REALTIME;
    void readDry(int channel, float* out, int numSamples) const noexcept CINDER_REALTIME;

    GenericPluginProcessor* const owner;
    // The fade keeps time of its own. The graph's clock is reset when bypass is left and when a
    // preset jumps, and that would end a fade with a click.
    wave::Environment fadeClock;
    wave::FloatParameter fade{&fadeClock};  // 0 is processed, 1 is bypassed
    std::vector<std::unique_ptr<wave::Delay>> dryDelays;
    std::int32_t fadeDelayCount = 0;
    bool bypassed = false;
    bool fadeDelayPending = false;
    bool resetPending = false;
    bool skipped = false;
    std::int32_t latencyApplied = 0;
    std::array<const float*, maxChannelCount> inputBlocks{};
    std::array<const float*, maxChannelCount> wetBlocks{};
};

}  // namespace cinder
