#include "processor/frame/GenericPluginProcessor.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "core/CriticalSection.h"
#include "core/platform/Denormals.h"
#include "midi/DefaultChannelEventReceiver.h"
#include "midi/DefaultEventReceiver.h"
#include "params/AbstractPluginParameter.h"
#include "processor/frame/BypassProcessor.h"
#include "processor/frame/Channel.h"

namespace cinder {

namespace {

int liveProcessors = 0;  // guarded by instanceLock()

/// The part of `beats` in a loop of 256 beats, the longest that anything synchronises with.
double wrappedBeats(double beats) {
    constexpr double loop = 256.0;
    const double turns = beats / loop;
    return (turns - std::floor(turns)) * loop;
}

/// A mono signal feeds every channel; a channel that is missing otherwise is silent.
const float* mainInput(const float* const* inputs, int count, int channel) {
    if (channel < count) return inputs[channel];
    return count == 1 ? inputs[0] : nullptr;
}

/// What comes behind the main inputs; a side chain with too few channels repeats its last one.
const float* sideChain(const float* const* inputs, int count, int numChannels, int channel) {
    return count > numChannels ? inputs[std::min(numChannels + channel, count - 1)] : nullptr;
}

}  // namespace

GenericPluginProcessor::GenericPluginProcessor(std::int32_t channelLayout, std::uint32_t features,
                                               RealtimeCounts realtimeCounts)
    : GenericPluginBase(channelLayout, features, &parameters) {
    this->realtimeCounts = realtimeCounts;
}

GenericPluginProcessor::~GenericPluginProcessor() {
    if (environment) environment->beginShutdown();
}

void GenericPluginProcessor::initialize() {
    const ScopedLock lock(instanceLock());
    environment = std::make_unique<wave::Environment>();
    environment->sampleRateChanged.setMainHandler(
        NotifyEvent::makeHandler(this, &GenericPluginProcessor::rateChanged));
    controllerMapping = std::make_unique<ControllerMapping>();
    eventReceiver = createEventReceiver();
    midiDecoder = std::make_unique<MidiDecoder>(eventReceiver.get());
    bypassProcessor = std::make_unique<BypassProcessor>(this);
    reserveRealtimeSources();
    if (features & keepsMidiQueue)
        midiOutQueue = std::make_unique<LockFreeQueue<TimedMidiEvent>>(32, 32);
    // Last: what has thrown is not alive, and would never free the tables.
    if (liveProcessors == 0) createSharedTables();
    ++liveProcessors;
}

void GenericPluginProcessor::releaseSharedTables() {
    const ScopedLock lock(instanceLock());
    if (--liveProcessors == 0) destroySharedTables();
}

void GenericPluginProcessor::reserveRealtimeSources() {
    const auto reserve = [](auto& list, std::int32_t count) {
        list.reserve(static_cast<std::size_t>(std::max(count, 0)));
    };
    reserve(audioSources, realtimeCounts.audioSources);
    reserve(levelSources, realtimeCounts.levelSourcesPerChannel * getChannelCount() +
                              realtimeCounts.globalLevelSources);
    reserve(spectrumSources, realtimeCounts.spectrumSources);
}

std::unique_ptr<AbstractMusicEventReceiver> GenericPluginProcessor::createEventReceiver() {
    ChannelEventTarget* const target = this;
    return std::make_unique<DefaultEventReceiver>(
        std::make_unique<DefaultChannelEventReceiver>(target));
}

void GenericPluginProcessor::deleteChannels() {
    channels.clear();
}

void GenericPluginProcessor::rateChanged(NotifyEvent::Argument) {
    bypassProcessor->sampleRateChanged();
    sampleRateChanged();
}

void GenericPluginProcessor::sampleRateChanged() {
    for (auto& channel : channels)
        channel->sampleRateChanged();
}

void GenericPluginProcessor::setLatency(std::int32_t samples) noexcept CINDER_REALTIME {
    latency.store(std::clamp(samples, 0, maxLatency), std::memory_order_relaxed);
}

void GenericPluginProcessor::setBypass(bool value, int index) noexcept CINDER_REALTIME {
    bool& request = bypassRequests[index == hostBypassIndex ? 0 : 1];
    if (request == value) return;
    request = value;
    const bool wasBypassed = bypassProcessor->isBypassed();
    const bool nowBypassed = bypassRequests[0] || bypassRequests[1];
    if (nowBypassed == wasBypassed) return;
    // A fade that turns round half way has never let the graph sleep. A reset would click there.
    const bool isStale = wasBypassed && bypassProcessor->hasSkipped();
    bypassProcessor->setBypassed(nowBypassed);
    if (isStale) environment->reset(wave::Environment::ResetMode::ActiveOnly);
}

void GenericPluginProcessor::setTransport(float tempo, float position) noexcept CINDER_REALTIME {
    // Infinite as well where a finite tempo is absurd; the own clock would never recover from it.
    const float samplesTimesTempo = static_cast<float>(lastBlockSize) * tempo;
    if (!std::isfinite(samplesTimesTempo) || !std::isfinite(position)) return;
    if (std::abs(position - lastHostPosition) <= sameValue) {
        songPosition += static_cast<double>(samplesTimesTempo) * (1.0 / 60.0) /
                        static_cast<double>(environment->getSampleRate());
        songPosition = wrappedBeats(songPosition);
    } else {
        songPosition = static_cast<double>(position);
    }
    lastHostPosition = position;
    tempoChanged(tempo, static_cast<float>(songPosition));
}

void GenericPluginProcessor::reset() noexcept CINDER_REALTIME {
    environment->reset(wave::Environment::ResetMode::ActiveOnly);
    bypassProcessor->reset();
    songPosition = 0.0;
    lastBlockSize = 0;
    applyQueuedParameters();
}

void GenericPluginProcessor::process(const float* const* inputs, int numInputs,
                                     float* const* outputs, int numOutputs,
                                     int numSamples) noexcept CINDER_REALTIME {
    platform::flushDenormals();
    lastController = -1;
    lastBlockSize = std::max(numSamples, 0);
    applyQueuedParameters();
    numOutputs = outputs ? std::clamp(numOutputs, 0, getChannelCount()) : 0;
    const auto longestSubBlock = [this]() noexcept {
        return std::clamp(getMaxSubBlockSize(), 1, environment->getMaxBlockSize());
    };
    int maxSubBlock = longestSubBlock();
    setInputBuffers(inputs, inputs ? numInputs : 0, lastBlockSize);

    bool handledMidi = false;
    TimedMidiEvent next{};
    for (int position = 0; position < numSamples;) {
        const bool hasEvent = midiQueue.pop(next);
        const int limit = hasEvent ? std::min(next.offset, numSamples) : numSamples;
        while (position < limit) {
            const int chunk = std::min(limit - position, maxSubBlock);
            bypassProcessor->processBlock(outputs, numOutputs, position, chunk);
            position += chunk;
        }
        if (!hasEvent) continue;
        midiDecoder->receiveMidiMessage(next.event);
        handledMidi = true;
        applyQueuedParameters();
        maxSubBlock = longestSubBlock();  // a controller may have turned what it depends on
    }
    while (midiQueue.pop(next)) {
        midiDecoder->receiveMidiMessage(next.event);
        handledMidi = true;
    }
    if (handledMidi && adapter) adapter->midiProcessed(lastController);
}

int GenericPluginProcessor::getMaxSubBlockSize() noexcept CINDER_REALTIME {
    return environment->getMaxBlockSize();
}

void GenericPluginProcessor::setInputBuffers(const float* const* inputs, int count,
                                             int numSamples) noexcept CINDER_REALTIME {
    const bool offersSideChain = (features & hasSideChain) && sideChainEnabled;
    for (auto& channel : channels) {
        const float* const main = mainInput(inputs, count, channel->index);
        const float* const side =
            offersSideChain ? sideChain(inputs, count, getChannelCount(), channel->index) : nullptr;
        channel->input.setBuffer(main, numSamples);
        channel->rawSideChainInput.setBuffer(side ? side : main, numSamples);
        channel->sideChainInput.setBuffer(side ? side : main, numSamples);
    }
}

void GenericPluginProcessor::getOutputBlocks(const float** destination, int count,
                                             int numSamples) noexcept CINDER_REALTIME {
    const auto numChannels = static_cast<int>(channels.size());
    for (int i = 0; i < count; ++i) {
        if (i >= numChannels) {
            destination[i] = environment->getZeroBlock()->data();
        } else {
            wave::Producer* const output = channels[static_cast<std::size_t>(i)]->output;
            destination[i] = output ? output->pull(numSamples)->data() : nullptr;
        }
    }
}

void GenericPluginProcessor::noteOff(int, float) noexcept CINDER_REALTIME {}
void GenericPluginProcessor::noteOn(int, float) noexcept CINDER_REALTIME {}
void GenericPluginProcessor::tempoChanged(float, float) noexcept CINDER_REALTIME {}

}  // namespace cinder
