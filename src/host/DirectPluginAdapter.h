#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <optional>

#include "host/UnifiedPluginAdapter.h"
#include "plugin/CinderPlugin.h"
#include "processor/CinderProcessor.h"

namespace cinder {

/// An instance of the product for a host that echoes nothing: a value that is set on either half
/// goes straight to the other. Who makes one is its host, and serves its events:
///
///     DirectPluginAdapter instance(stereoLayout);
///     instance.setSampleRate(48000.0f);
///     instance.setParameter(id, value);                   // any thread but that of audio
///     instance.process(inputs, 2, outputs, 2, 256);       // the thread of audio
///     instance.dispatch();                                // the thread that made it, now and then
///
/// State   both halves, and whether the host has the instance bypassed
/// Errors  none
class DirectPluginAdapter final : public UnifiedPluginAdapter {
public:
    /// With a seed, whatever is random is the same in every run.
    explicit DirectPluginAdapter(std::int32_t channelLayout,
                                 std::optional<std::uint32_t> seed = {});

    CinderPlugin& getPlugin() const { return *product; }
    CinderProcessor& getProcessor() const { return *productProcessor; }

    /// While no audio runs. [host]
    void setSampleRate(float rate);
    /// As a host's automation does it: on both halves, and nobody echoes. [any] but [audio]
    void setParameter(int id, float value);
    void setBypassed(bool bypassed) { hostBypass = bypassed; }  ///< [any]
    bool isBypassed() const { return hostBypass; }              ///< [any]
    /// As announced, in samples. [any]
    std::int32_t getLatency() const { return hostLatency; }

    /// Transport and MIDI events have gone to the processor before. [audio]
    void process(const float* const* inputs, int numInputs, float* const* outputs, int numOutputs,
                 int numSamples) noexcept CINDER_REALTIME;
    /// Runs what the other threads have left for this one; how much that was. [ui]
    int dispatch();

    /// All sections of a state. Whether the stream is good. [ui, host]
    bool writeState(std::ostream& stream) const;
    /// A state without the last section leaves bypass alone.
    /// Errors  false: a section is refused. Values that came before it stay, in both halves
    bool readState(std::istream& stream);

    // What a binding gives.
    void latencyChanged() override;
    void setHostParameter(int id, float value) override;
    void parameterValueChanged(int index) noexcept CINDER_REALTIME override;

private:
    static constexpr int bitsPerWord = 64;
    static constexpr std::size_t numWords = 16;

    int echoProcessor();

    CinderPlugin* const product;              // owned by the base
    CinderProcessor* const productProcessor;  // owned by the base
    std::atomic<bool> hostBypass{false};
    std::atomic<std::int32_t> hostLatency{0};
    // A bit for each parameter that the processor has changed by itself.
    std::array<std::atomic<std::uint64_t>, numWords> processorChanges{};
};

}  // namespace cinder
