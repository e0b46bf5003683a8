#pragma once

#include "cinder/bands/BandsParameters.h"
#include "cinder/bands/ChannelGraph.h"
#include "cinder/bands/ConvertedPluginParameter.h"
#include "core/Property.h"
#include "distortion/styles/StyleSet.h"
#include "params/PropPluginParameter.h"
#include "processor/frame/GenericPluginProcessor.h"

#include <array>
#include <memory>
#include <vector>

namespace cinder {

/// One to six bands with a style and a drive each, and their sum: see ChannelGraph.h for the path
/// and BandsParameters.h for the parameters. Bands beyond the count cost nothing.
///
/// A band that comes or goes fades, in the split and in the sum; one that comes back has forgotten
/// what it played. A change of the factor changes the latency, and is meant for while the music
/// rests. The latency is that of the converters, which Smudge goes around: its band is early by it.
class BandsProcessor final : public GenericPluginProcessor, private PropertyOwner {
public:
    explicit BandsProcessor(std::int32_t channelLayout);

protected:
    void sampleRateChanged() override;

private:
    template <typename Parameter>
    using List = std::vector<std::unique_ptr<Parameter>>;

    void propertyChanged(AbstractProperty* property) override;
    void addGraph();
    void updateBands() noexcept CINDER_REALTIME;
    void refreshBand(std::size_t band) noexcept CINDER_REALTIME;
    void updateFactor() noexcept CINDER_REALTIME;

    PropPluginParameter<int> bandsParameter;
    List<ConvertedPluginParameter> crossoverParameters;
    List<PropPluginParameter<int>> styleParameters;
    List<ConvertedPluginParameter> driveParameters;
    PropPluginParameter<int> oversamplingParameter;
    IndexedPluginParameter<bool> bypassSwitch;
    Initialized initialized;

    Property<int> bandCount;
    Property<int> log2Factor;
    StyleSet styles;
    BandsShared shared;
    List<wave::FloatParameterSource> crossovers;  // log2 of Hz
    List<wave::FloatParameterSource> drives;      // 0..1, by band
    std::array<DistortionController, maxBands> controllers;
    std::vector<std::unique_ptr<ChannelGraph>> graphs;  // by channel
};

}  // namespace cinder
