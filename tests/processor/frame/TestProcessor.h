#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "params/FloatParamPluginParameter.h"
#include "params/PropPluginParameter.h"
#include "processor/frame/BypassProcessor.h"
#include "processor/frame/Channel.h"
#include "wave/FloatParameterSource.h"

namespace cinder::test {

/// out = in * gain, or its negative.
class GainStage final : public wave::Filter {
public:
    GainStage(wave::Environment* environment, wave::Producer* gain, const Property<bool>* inverted)
        : wave::Filter(environment), gain(gain), inverted(inverted) {}

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned) noexcept CINDER_REALTIME override {
        const wave::BasicBlock<float>& gains = *gain->pull(numSamples);
        for (int i = 0; i < numSamples; ++i)
            (*out)[i] = (*in)[i] * (inverted->get() ? -gains[i] : gains[i]);
    }

private:
    wave::Producer* gain;
    const Property<bool>* inverted;
};

/// A stage that is late by as many samples as it says.
class LateStage final : public wave::Filter {
public:
    LateStage(wave::Environment* environment, std::int32_t latency)
        : wave::Filter(environment), delay(environment, latency) {
        makeResettable();
    }
    void reset() noexcept CINDER_REALTIME override { delay.clear(); }

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned) noexcept CINDER_REALTIME override {
        delay.write(in->data(), numSamples);
        delay.read(delay.getMaxDelay(), out->data(), numSamples);
    }

private:
    wave::Delay delay;
};

/// Writes down the sub-blocks in which it runs.
class CycleLog final : public wave::Source {
public:
    explicit CycleLog(wave::Environment* environment) : wave::Source(environment) {
        sizes.reserve(1 << 16);
        setRenderPriority(0);
    }
    void render(wave::BasicBlock<float>*, int numSamples,
                unsigned) noexcept CINDER_REALTIME override {
        if (sizes.size() < sizes.capacity()) sizes.push_back(numSamples);
    }
    std::vector<int> sizes;
};

/// A product in small: a gain with a ramp, a polarity that switches at once, a latency that is made
/// up, a bypass of its own, MIDI.
class TestProcessor : public GenericPluginProcessor {
public:
    explicit TestProcessor(std::int32_t layout = stereoLayout, std::uint32_t features = 0,
                           std::int32_t latency = 0);

    using GenericPluginProcessor::addChannel;
    using GenericPluginProcessor::audioSources;
    using GenericPluginProcessor::forwarders;
    using GenericPluginProcessor::getChannels;
    using GenericPluginProcessor::getEventReceiver;
    using GenericPluginProcessor::levelSources;
    using GenericPluginProcessor::setLatency;
    using GenericPluginProcessor::sideChainEnabled;
    using GenericPluginProcessor::spectrumSources;

    using GenericPluginProcessor::parameterChanged;
    void parameterChanged(int index) noexcept CINDER_REALTIME override {
        GenericPluginProcessor::parameterChanged(index);
        changes[static_cast<std::size_t>(numChanges++ & 63)] = index;
    }
    int getMaxSubBlockSize() noexcept CINDER_REALTIME override { return maxSubBlock; }
    void noteOn(int note, float) noexcept CINDER_REALTIME override {
        notesOn[static_cast<std::size_t>(numNotesOn++ & 63)] = {note, environment->getPosition()};
    }
    void noteOff(int, float) noexcept CINDER_REALTIME override { ++numNotesOff; }
    void tempoChanged(float newTempo, float position) noexcept CINDER_REALTIME override {
        tempo = newTempo;
        beats = position;
    }
    void createSharedTables() override { ++tablesAlive; }
    void destroySharedTables() override { --tablesAlive; }

    static inline int tablesAlive = 0;

    FloatParamPluginParameter gain{this, "Gain", {0.0f, 4.0f, 2.0f}};
    PropPluginParameter<bool> invert{this, "Invert"};
    PropPluginParameter<bool> bypass{this, "Bypass"};
    PropPluginParameter<MidiState> receiveMidi{this, "Receive Midi"};

    int maxSubBlock = 256;
    float tempo = 0.0f, beats = 0.0f;
    struct Note {
        int note;
        std::uint64_t position;
        bool operator==(const Note&) const = default;
    };
    std::array<Note, 64> notesOn{};
    int numNotesOn = 0;
    int numNotesOff = 0;
    std::array<int, 64> changes{};  // indices, in the order in which they were applied
    int numChanges = 0;

private:
    Initialized initialized{this};

public:
    CycleLog cycles{environment.get()};
    wave::FloatParameterSource gainSource{environment.get(), 2.0f, 0.0f, 4.0f};
    Property<bool> inverted{false};

private:
    std::vector<std::unique_ptr<GainStage>> gainStages;
    std::vector<std::unique_ptr<LateStage>> lateStages;
};

using Buffers = std::vector<std::vector<float>>;

/// Hands whole signals to a processor in host blocks of the lengths in `cuts`, over and over, with
/// every call under the guard. Further settings follow the position in the signal.
class Host {
public:
    explicit Host(GenericPluginProcessor& processor) : processor(processor) {}

    /// As many outputs as inputs, or as many as said.
    Buffers render(const Buffers& inputs, const std::vector<int>& cuts, int numOutputs = -1);

    /// Output i is written over the input of this index; empty: into buffers of their own.
    std::vector<int> outputOverInput;

private:
    GenericPluginProcessor& processor;
};

/// One guarded call.
void processGuarded(GenericPluginProcessor& processor, const float* const* inputs, int numInputs,
                    float* const* outputs, int numOutputs, int numSamples);

/// Host cuts that every invariance test goes through: fixed lengths and a random one.
std::vector<std::vector<int>> hostCuts(std::uint64_t seed, int numSamples);

}  // namespace cinder::test
