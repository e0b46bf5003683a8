#include "processor/CinderProcessor.h"

#include <algorithm>
#include <cmath>

#include "midi/DefaultEventReceiver.h"
#include "modulation/matrix/GlobalModulationProducer.h"
#include "processor/FeedbackLimit.h"
#include "processor/SharedTables.h"

namespace cinder {

namespace {

constexpr int highQualityDistortion = 8, highQualityClipper = 4;  // times the rate

constexpr int soloBit = 1;

constexpr RealTimeAudioBuffer::FrameLayout recording = RealTimeAudioBuffer::getFrameLayout();

constexpr GenericPluginBase::RealtimeCounts offered = {1, 0, 0, 0};  // what is heard, as audio

int bitsOf(const BandParameterSetExtension& band) noexcept CINDER_REALTIME {
    return static_cast<int>(band[BandExtensionParameter::State].value());
}

}  // namespace

CinderProcessor::CinderProcessor(std::int32_t channelLayout, std::optional<std::uint32_t> seed)
    : ModulationMatrixProcessor(channelLayout, CinderParameters::features, offered),
      CinderParameters(this, this),
      initialized(this),
      graph(makeMatrix(), *this, getChannelCount()),
      sources(*getMatrix(), *this, {&graph.inputPeak, &graph.sideChainPeak},
              SharedTables::get().envelopeCurves),
      realTimeBuffer(environment.get(), nullptr, getChannelCount(), recording.frameSize,
                     recording.frameCount) {
    getEventReceiver()
        .slot(AbstractMusicEventReceiver::allChannels)
        .get()
        ->addListener(&sources.getMidiListener());
    addChannels(seed);
    if (seed) sources.seedRandom(*seed);
    recordOutput();
    listReactions();
    applyParameters();
    updateBands();
    updateQuality();
    updateLatency();
}

CinderProcessor::~CinderProcessor() {
    environment->beginShutdown();
    deleteChannels();
}

ModulationMatrix& CinderProcessor::makeMatrix() {
    CinderParameters::initialize();
    createMatrix(environment.get());
    return *getMatrix();
}

void CinderProcessor::addChannels(std::optional<std::uint32_t> seed) {
    for (int i = 0; i < getChannelCount(); ++i) {
        CinderChannel* const first = i == 1 ? channels.front() : nullptr;
        channels.push_back(&addChannel(std::make_unique<CinderChannel>(this, graph, first, seed)));
        if (seed) *seed += SharedGraph::numBands;
    }
    for (CinderChannel* channel : channels)
        for (int i = 0; i < SharedGraph::numBands; ++i)
            graph.bands[static_cast<std::size_t>(i)]->controller.addProcessors(
                &channel->band(i).getDistortion(), &channel->band(i).getCabinet());
    for (const auto& band : graph.bands)
        band->controller.applyStyle();
}

void CinderProcessor::recordOutput() {
    RealTimeAudioBuffer::Measurement* const measurement = realTimeBuffer.createMeasurement();
    for (const CinderChannel* channel : channels)
        measurement->setInput(channel->index, channel->output);
    audioSources.push_back(measurement);
}

void CinderProcessor::listReactions() {
    reactions.resize(static_cast<std::size_t>(parameterCount()));
    for (int i = 0; i < xlfos.setCount(); ++i)
        react((*xlfos.set(i))[XLFOParameter::Snap],
              {Reaction::Kind::Snap, static_cast<std::uint8_t>(i)});
    for (int i = 0; i < egs.setCount(); ++i)
        react((*egs.set(i))[EGParameter::Triggering],
              {Reaction::Kind::Triggering, static_cast<std::uint8_t>(i)});
    react(bands.numActive, {Reaction::Kind::Bands});
    for (int i = 0; i < bandExtensions.setCount(); ++i)
        react((*bandExtensions.set(i))[BandExtensionParameter::State], {Reaction::Kind::Bands});
    react((*this)[GlobalChoiceParameter::HighQuality], {Reaction::Kind::Quality});
}

void CinderProcessor::react(const AbstractPluginParameter& parameter, Reaction reaction) {
    reactions[static_cast<std::size_t>(parameter.getId())] = reaction;
}

void CinderProcessor::noteOn(int note, float) noexcept CINDER_REALTIME {
    sources.noteOn(note);
}

void CinderProcessor::noteOff(int, float) noexcept CINDER_REALTIME {
    sources.noteOff();
}

float CinderProcessor::getSourceValue(int index) const {
    return sources.getSourceValue(index);
}

void CinderProcessor::tempoChanged(float tempo, float position) noexcept CINDER_REALTIME {
    sources.setTempo(tempo, position);
}

void CinderProcessor::createSharedTables() {
    SharedTables::create();
}

void CinderProcessor::destroySharedTables() {
    SharedTables::destroy();
}

int CinderProcessor::getMaxSubBlockSize() noexcept CINDER_REALTIME {
    int converters = graph.distortionStyle.getLatency(graph.distortionStyle.getFactor());
    // The quality may change before the host's next block.
    if (wantsHighQuality)
        converters = std::max(converters, graph.distortionStyle.getLatency(highQualityDistortion));
    return longestSubBlock(*getMatrix(), countRunningLoops(), converters);
}

/// Bands that leave the sums are heard until they have faded, and so are their loops.
int CinderProcessor::countRunningLoops() noexcept CINDER_REALTIME {
    int running = graph.bandModel.bandCount;
    for (int i = running; i < SharedGraph::numBands; ++i)
        for (CinderChannel* channel : channels)
            if (channel->band(i).isLoopActive() && !channel->endLoop(i)) running = i + 1;
    return running;
}

void CinderProcessor::getOutputBlocks(const float** destination, int count,
                                      int numSamples) noexcept CINDER_REALTIME {
    changeQualityInSilence();
    GenericPluginProcessor::getOutputBlocks(destination, count, numSamples);
}

void CinderProcessor::parameterWillChange(int index) noexcept CINDER_REALTIME {
    GenericPluginProcessor::parameterWillChange(index);
    if (index == -1 || index == (*this)[GlobalChoiceParameter::HighQuality].getId())
        updateLatency();
}

void CinderProcessor::parameterChanged(int index) noexcept CINDER_REALTIME {
    GenericPluginProcessor::parameterChanged(index);
    const Reaction reaction = reactions[static_cast<std::size_t>(index)];
    switch (reaction.kind) {
        case Reaction::Kind::None:
            return;
        case Reaction::Kind::Snap:
            return sources.snapChanged(reaction.number);
        case Reaction::Kind::Triggering:
            return sources.triggeringChanged(reaction.number);
        case Reaction::Kind::Bands:
            return updateBands();
        case Reaction::Kind::Quality:
            return updateQuality();
    }
}

void CinderProcessor::sampleRateChanged() {
    GenericPluginProcessor::sampleRateChanged();
    updateLoops();
    updateLatency();
}

/// An inactive band sounds in neither sum. A muted one is only not heard: it goes on running, dry
/// sum and loop included, and so comes back as it is.
void CinderProcessor::updateBands() noexcept CINDER_REALTIME {
    const int active = bands.activeCount();
    bool anySolo = false;
    for (int i = 0; i < active; ++i)
        anySolo = anySolo || (bitsOf(*bandExtensions.set(i)) & soloBit) != 0;
    for (int i = graph.bandModel.bandCount; i < active; ++i)
        graph.bands[static_cast<std::size_t>(i)]->controller.applyStyle();
    graph.bandModel.bandCount.assign(active);
    for (CinderChannel* channel : channels)
        for (int i = 0; i < SharedGraph::numBands; ++i)
            channel->setBand(i, i < active, !isMuted(i, anySolo));
}

bool CinderProcessor::isMuted(int band, bool anySolo) const noexcept CINDER_REALTIME {
    const auto state = static_cast<SoloMuteState>(bitsOf(*bandExtensions.set(band)));
    return state == SoloMuteState::Mute || (anySolo && state == SoloMuteState::Normal);
}

/// Another quality is another latency, so the sound jumps in time: it is faded out before, unless
/// nothing has been heard yet.
void CinderProcessor::updateQuality() noexcept CINDER_REALTIME {
    wantsHighQuality = (*this)[GlobalChoiceParameter::HighQuality].value() != 0.0f;
    graph.qualityGain.assign(wantsHighQuality == isHighQuality ? 1.0f : 0.0f);
    changeQualityInSilence();
}

void CinderProcessor::changeQualityInSilence() noexcept CINDER_REALTIME {
    if (wantsHighQuality == isHighQuality || graph.qualityGain.parameter.isRamping()) return;
    isHighQuality = wantsHighQuality;
    graph.distortionStyle.setFactor(isHighQuality ? highQualityDistortion : 1);
    graph.clipperStyle.setFactor(isHighQuality ? highQualityClipper : 1);
    for (CinderChannel* channel : channels)
        channel->resetConverters();
    updateLoops();
    graph.qualityGain.assign(1.0f);
}

void CinderProcessor::updateLoops() noexcept CINDER_REALTIME {
    const int samples = graph.distortionStyle.getLatency(graph.distortionStyle.getFactor());
    for (CinderChannel* channel : channels)
        for (int i = 0; i < SharedGraph::numBands; ++i)
            channel->band(i).loopCompensation().assign(samples);
}

void CinderProcessor::updateLatency() noexcept CINDER_REALTIME {
    setLatency(CinderParameters::latency(static_cast<double>(environment->getSampleRate())));
}

}  // namespace cinder
