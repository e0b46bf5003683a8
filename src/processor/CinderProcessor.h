#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "analysis/buffer/RealTimeAudioBuffer.h"
#include "params/tree/CinderParameters.h"
#include "processor/CinderChannel.h"
#include "processor/ModulationMatrixProcessor.h"
#include "processor/ModulationSources.h"
#include "processor/SharedGraph.h"

namespace cinder {

/// The product's processing half: the frame, a copy of the parameter tree, the modulation and the
/// graph. Everything is wired once; bands, audition, channel mode and quality are switched by
/// routers, gains and factors.
///
/// Shape   mono or stereo; other layouts run without pans and mid/side. A side chain of as many
///         channels, or none
/// State   that of the graph and of the parameters
/// Errors  none
class CinderProcessor final : public ModulationMatrixProcessor, public CinderParameters {
public:
    /// With a seed, whatever is random is the same in every run.
    explicit CinderProcessor(std::int32_t channelLayout, std::optional<std::uint32_t> seed = {});
    ~CinderProcessor() override;

    void noteOff(int note, float velocity) noexcept CINDER_REALTIME override;
    void noteOn(int note, float velocity) noexcept CINDER_REALTIME override;
    float getSourceValue(int index) const override;

    using CinderParameters::features;

protected:
    using GenericPluginProcessor::parameterChanged;

    void tempoChanged(float tempo, float position) noexcept CINDER_REALTIME override;
    void createSharedTables() override;
    int getMaxSubBlockSize() noexcept CINDER_REALTIME override;
    void getOutputBlocks(const float** destination, int count,
                         int numSamples) noexcept CINDER_REALTIME override;
    void parameterWillChange(int index) noexcept CINDER_REALTIME override;
    void parameterChanged(int index) noexcept CINDER_REALTIME override;
    void destroySharedTables() override;
    void sampleRateChanged() override;

private:
    /// What a change of a parameter asks for, besides its own work.
    struct Reaction {
        enum class Kind : std::uint8_t { None, Snap, Triggering, Bands, Quality };
        Kind kind = Kind::None;
        std::uint8_t number = 0;  // of the set
    };

    ModulationMatrix& makeMatrix();
    void addChannels(std::optional<std::uint32_t> seed);
    void recordOutput();
    void listReactions();
    void react(const AbstractPluginParameter& parameter, Reaction reaction);
    void updateBands() noexcept CINDER_REALTIME;
    bool isMuted(int band, bool anySolo) const noexcept CINDER_REALTIME;
    int countRunningLoops() noexcept CINDER_REALTIME;
    void updateQuality() noexcept CINDER_REALTIME;
    void changeQualityInSilence() noexcept CINDER_REALTIME;
    void updateLoops() noexcept CINDER_REALTIME;
    void updateLatency() noexcept CINDER_REALTIME;

    Initialized initialized;
    SharedGraph graph;
    ModulationSources sources;
    RealTimeAudioBuffer realTimeBuffer;    // of what is heard, for the analyzer
    std::vector<CinderChannel*> channels;  // owned by the frame
    std::vector<Reaction> reactions;       // by id
    bool isHighQuality = false;
    bool wantsHighQuality = false;  // as the parameter was last applied
};

}  // namespace cinder
