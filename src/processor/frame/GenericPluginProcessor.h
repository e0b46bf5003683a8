#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "analysis/RealtimeSources.h"
#include "core/LockFreeQueue.h"
#include "core/Realtime.h"
#include "midi/AbstractMusicEventReceiver.h"
#include "midi/ChannelEventTarget.h"
#include "midi/MidiDecoder.h"
#include "midi/MidiMessageReceiver.h"
#include "params/GenericPluginBase.h"
#include "state/BinaryData.h"
#include "wave/Environment.h"

namespace cinder {

/// The frame in which a block of the host's audio enters a product: it owns the clock, an input for
/// each channel, the bypass stage and the queues into the audio thread, and cuts a host block into
/// sub-blocks at MIDI events and at the longest sub-block that the product allows.
///
/// A product derives, and adds parameters and a graph, in this order:
///
///     class Gain final : public GenericPluginProcessor {
///     public:
///         Gain() : GenericPluginProcessor(stereoLayout) {
///             for (int i = 0; i < getChannelCount(); ++i)
///                 addChannel(std::make_unique<GainChannel>(this));  // sets its output
///             gain.addTarget(...);
///             applyParameters();
///         }
///
///     private:
///         FloatParamPluginParameter gain{this, "Gain", {0.0f, 4.0f, 1.0f}};  // 1. parameters
///         Initialized initialized{this};  // 2. the frame: from here on `environment` exists
///         SomeStage stage{environment.get()};  // 3. the graph
///     };
///
/// `features` and `realtimeCounts` must be what they shall be when `Initialized` is made: arguments
/// of this constructor, or set by a base that stands behind it. The graph is never rebuilt while
/// audio runs; what the frame tells the product, it tells through the virtual operations. Who
/// overrides `parameterChanged` adds `using GenericPluginProcessor::parameterChanged;`, since the
/// owner of a parameter has an operation of that name as well.
///
/// Shape   host blocks of any length, 0 included; as many channels as the layout has. An output
///         buffer may be an input buffer, of the same channel or any other
/// Range   whatever the host brings; samples that are not finite enter as 0, see wave::Input
/// State   everything here belongs to the audio thread, but for the queues and what is atomic
/// Errors  none; a full queue drops its newest entry
class GenericPluginProcessor : public GenericPluginBase, private ChannelEventTarget {
public:
    class Channel;
    class BypassProcessor;

    /// What the frame tells the binding. All three may be called on the audio thread.
    class ProcessorAdapter {
    public:
        virtual ~ProcessorAdapter() = default;
        virtual void programChanged(int bank, int program) noexcept CINDER_REALTIME = 0;
        /// A block had MIDI events; the last controller among them, or -1.
        virtual void midiProcessed(int lastController) noexcept CINDER_REALTIME = 0;
        /// A value was set that the host does not know of.
        virtual void parameterValueChanged(int index) noexcept CINDER_REALTIME = 0;
    };

    /// Which of two parties wants bypass. Bypassed is who has at least one.
    enum BypassIndex : int { hostBypassIndex = 0, parameterBypassIndex = 1 };

    ~GenericPluginProcessor() override;

    // For the binding, before audio runs.
    void setAdapter(ProcessorAdapter* newAdapter) { adapter = newAdapter; }

    // For the binding, in this order in each of the host's callbacks. The sample rate is compared
    // and set on the environment, behind `setBypass`. [audio]
    void setBypass(bool value, int index) noexcept CINDER_REALTIME;
    void setSideChainConnected(bool connected) noexcept CINDER_REALTIME {
        sideChainConnected = connected;
    }
    /// The offset counts from the start of the block that `process` gets next. Any thread may send
    /// an event; what it sends sounds at the offset in the next block.
    void enqueueMidiEvent(const MidiEvent& event, std::int32_t offset = 0) noexcept CINDER_REALTIME;
    /// Beats per minute and beats. Where the host's position stands still an own clock runs on.
    void setTransport(float tempo, float position) noexcept CINDER_REALTIME;
    void process(const float* const* inputs, int numInputs, float* const* outputs, int numOutputs,
                 int numSamples) noexcept CINDER_REALTIME;

    // The hooks and answers of the frame, which a product may override.

    /// While suspended, changes wait in the queue. Brackets nest. [any]
    virtual void suspendParameterUpdates() noexcept CINDER_REALTIME;
    virtual void resumeParameterUpdates() noexcept CINDER_REALTIME;
    virtual int getParameterCount() const noexcept CINDER_REALTIME { return parameterCount(); }
    virtual AbstractPluginParameter* getParameter(int index) const noexcept CINDER_REALTIME {
        return parameter(index);
    }
    /// Queues a value; it takes effect at the next block or MIDI event. [any]
    virtual void setParameterValue(int index, float value, unsigned flags) noexcept CINDER_REALTIME;
    /// Queues a break: what is set behind it jumps, and running ramps end. [any]
    virtual void requestDiscontinuity() noexcept CINDER_REALTIME;
    /// For the interface: audio frames, levels, spectra, MIDI events. [any] but [audio]
    virtual void writeRealtimeData(BinaryDataWriter& writer);
    /// Bits from the interface: 1 asks for a level source's first reset, 2 for its second. [any]
    /// but [audio]
    void resetLevels(int source, std::uint32_t requests);
    void noteOff(int note, float velocity) noexcept CINDER_REALTIME override;
    void noteOn(int note, float velocity) noexcept CINDER_REALTIME override;
    /// Playback starts anew: state of the past is cleared. [audio]
    virtual void reset() noexcept CINDER_REALTIME;

    wave::Environment* getEnvironment() const { return environment.get(); }
    std::int32_t getLatency() const noexcept CINDER_REALTIME {
        return latency.load(std::memory_order_relaxed);
    }
    /// 0: MIDI gets through.
    std::int32_t getMidiState() const { return midiState; }
    double getSongPosition() const { return songPosition; }
    bool isSideChainConnected() const { return sideChainConnected; }
    const BypassProcessor& getBypassProcessor() const { return *bypassProcessor; }
    const ControllerMapping& getControllerMapping() const noexcept CINDER_REALTIME override {
        return *controllerMapping;
    }
    ControllerMapping& getControllerMapping() { return *controllerMapping; }

protected:
    static constexpr std::int32_t maxLatency = 1 << 20;

    /// The life of the frame within its product: a member behind the parameters and in front of the
    /// graph. Its constructor builds the environment, the queues' readers and the bypass, and the
    /// tables that all products share if this is the first one alive. When it goes, the graph
    /// behind it has gone already; the channels go now, and the last one alive frees the tables.
    class Initialized {
    public:
        explicit Initialized(GenericPluginProcessor* processor) : processor(processor) {
            processor->initialize();
        }
        ~Initialized() {
            processor->deleteChannels();
            processor->releaseSharedTables();
        }
        Initialized(const Initialized&) = delete;
        Initialized& operator=(const Initialized&) = delete;

    private:
        GenericPluginProcessor* const processor;
    };

    explicit GenericPluginProcessor(std::int32_t channelLayout, std::uint32_t features = 0,
                                    RealtimeCounts realtimeCounts = {});

    /// Takes over the channel of the next index.
    template <typename T>
    T& addChannel(std::unique_ptr<T> channel) {
        T& added = *channel;
        channels.push_back(std::move(channel));
        return added;
    }
    /// For a product whose channels must go before its other members.
    void deleteChannels();
    /// Gives every parameter's present value to what it steers. The last thing in the product's
    /// constructor; nothing ramps yet.
    void applyParameters() noexcept CINDER_REALTIME;
    /// What the host is told, 0..maxLatency samples. [any]
    void setLatency(std::int32_t samples) noexcept CINDER_REALTIME;

    virtual void tempoChanged(float tempo, float position) noexcept CINDER_REALTIME;
    /// Points the inputs of all channels at the host's buffers.
    virtual void setInputBuffers(const float* const* inputs, int count,
                                 int numSamples) noexcept CINDER_REALTIME;
    virtual std::unique_ptr<AbstractMusicEventReceiver> createEventReceiver();
    /// Under the process-wide lock, for the first processor alive.
    virtual void createSharedTables() {}
    /// Asked when parameters may have changed: once a host block, and behind each MIDI event.
    virtual int getMaxSubBlockSize() noexcept CINDER_REALTIME;
    /// On the thread that sets the parameter, when the value is stored but not yet queued. Index -1
    /// stands for all of them. [any]
    virtual void parameterWillChange(int index) noexcept CINDER_REALTIME;
    /// On the audio thread, when the value has been applied. A product calls this one first.
    virtual void parameterChanged(int index) noexcept CINDER_REALTIME;
    virtual void applyQueuedParameters() noexcept CINDER_REALTIME;
    /// Pulls the outputs of the channels; null for a channel without an output.
    virtual void getOutputBlocks(const float** destination, int count,
                                 int numSamples) noexcept CINDER_REALTIME;
    /// Under the process-wide lock, for the last processor alive.
    virtual void destroySharedTables() {}
    /// The rate of the environment has changed.
    virtual void sampleRateChanged();

    // The owner's words for what the frame calls by names of its own.
    void beginUpdate() final { suspendParameterUpdates(); }
    void endUpdate() final { resumeParameterUpdates(); }
    void parameterChanged(int id, float value, unsigned flags) final {
        setParameterValue(id, value, flags);
    }
    void requestHostRefresh() final { requestDiscontinuity(); }

    AbstractMusicEventReceiver& getEventReceiver() const { return *eventReceiver; }
    const std::vector<std::unique_ptr<Channel>>& getChannels() const { return channels; }

    std::unique_ptr<wave::Environment> environment;
    // What the interface gets, not owned; filled by the product.
    std::vector<AudioSource*> audioSources;
    std::vector<LevelSource*> levelSources;
    std::vector<SpectrumSource*> spectrumSources;

private:
    static constexpr std::uint32_t discontinuity = 0xffffffff;

    struct ParameterChange {
        std::uint32_t index;
        float value;
    };
    struct TimedMidiEvent {
        MidiEvent event;
        std::int32_t offset;
    };

    void initialize();
    void reserveRealtimeSources();
    void releaseSharedTables();
    void rateChanged(NotifyEvent::Argument environment);
    void queueParameterChange(std::uint32_t index, float value) noexcept CINDER_REALTIME;
    void applyParameter(int index, float value) noexcept CINDER_REALTIME;
    bool isMidiBlocked() const noexcept CINDER_REALTIME;
    void writeMidiEvents(BinaryDataWriter& writer);

    // ChannelEventTarget
    void controllerSeen(int number) noexcept CINDER_REALTIME override { lastController = number; }
    void programChanged(int bank, int program) noexcept CINDER_REALTIME override;
    GenericParameterOwner& getParameterOwner() noexcept CINDER_REALTIME override { return *this; }

    ProcessorAdapter* adapter = nullptr;  // not owned
    std::unique_ptr<BypassProcessor> bypassProcessor;
    std::array<bool, 2> bypassRequests{};
    std::vector<std::unique_ptr<Channel>> channels;
    std::unique_ptr<ControllerMapping> controllerMapping;
    float lastHostPosition = 0.0f;  // beats
    bool sideChainConnected = false;
    std::int32_t lastController = -1;
    std::int32_t lastBlockSize = 0;
    std::atomic<std::int32_t> latency{0};
    std::unique_ptr<AbstractMusicEventReceiver> eventReceiver;
    std::unique_ptr<MidiDecoder> midiDecoder;
    std::int32_t midiState = 0;
    LockFreeQueue<TimedMidiEvent> midiQueue{1024, 65536};
    LockFreeQueue<ParameterChange> parameterQueue{8192, 65536};
    std::vector<AbstractPluginParameter*> parameters;
    std::atomic<bool> parameterChangeDropped{false};
    std::atomic<std::int32_t> parameterUpdateSuspensions{0};
    std::unique_ptr<LockFreeQueue<TimedMidiEvent>> midiOutQueue;
    double songPosition = 0.0;  // beats, 0..256 where the own clock runs
};

}  // namespace cinder
