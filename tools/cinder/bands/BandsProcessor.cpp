#include "cinder/bands/BandsProcessor.h"

#include "processor/frame/Channel.h"

#include <cmath>

namespace cinder {

namespace {

constexpr const ParameterRow& rowAt(int id) {
    return bandsParameterRows[static_cast<std::size_t>(id)];
}

IndexRange stepsOf(int id) {
    const ParameterRow& row = rowAt(id);
    return {static_cast<std::int32_t>(row.minimum), static_cast<std::int32_t>(row.maximum),
            static_cast<std::int32_t>(row.defaultValue)};
}

float log2OfHz(float hz) noexcept CINDER_REALTIME {
    return std::log2(hz);
}

float fractionOf(float percent) noexcept CINDER_REALTIME {
    return percent * 0.01f;
}

auto makeSteps(GenericParameterOwner* owner, int firstId, int count) {
    std::vector<std::unique_ptr<PropPluginParameter<int>>> list;
    for (int id = firstId; id < firstId + count; ++id)
        list.push_back(
            std::make_unique<PropPluginParameter<int>>(owner, rowAt(id).name, stepsOf(id)));
    return list;
}

auto makeConverted(GenericParameterOwner* owner, int firstId, int count,
                   ConvertedPluginParameter::Conversion convert) {
    std::vector<std::unique_ptr<ConvertedPluginParameter>> list;
    for (int id = firstId; id < firstId + count; ++id) {
        const ParameterRow& row = rowAt(id);
        list.push_back(std::make_unique<ConvertedPluginParameter>(
            owner, row.name, FloatRange{row.minimum, row.maximum, row.defaultValue}, convert));
    }
    return list;
}

/// The control values that these steer.
auto makeControls(wave::Environment* environment,
                  const std::vector<std::unique_ptr<ConvertedPluginParameter>>& parameters,
                  ConvertedPluginParameter::Conversion convert) {
    std::vector<std::unique_ptr<wave::FloatParameterSource>> list;
    for (const auto& parameter : parameters) {
        list.push_back(std::make_unique<wave::FloatParameterSource>(
            environment, convert(parameter->defaultValue()), convert(parameter->minimum()),
            convert(parameter->maximum())));
        parameter->setTarget(&list.back()->parameter);
    }
    return list;
}

}  // namespace

BandsProcessor::BandsProcessor(std::int32_t channelLayout)
    : GenericPluginProcessor(channelLayout),
      bandsParameter(this, rowAt(bandsId).name, stepsOf(bandsId)),
      crossoverParameters(makeConverted(this, crossoverId, maxCrossovers, log2OfHz)),
      styleParameters(makeSteps(this, bandStyleId, maxBands)),
      driveParameters(makeConverted(this, bandDriveId, maxBands, fractionOf)),
      oversamplingParameter(this, rowAt(bandsOversamplingId).name, stepsOf(bandsOversamplingId)),
      bypassSwitch(this, rowAt(bandsBypassId).name, stepsOf(bandsBypassId)),
      initialized(this),
      bandCount(static_cast<int>(bandsParameter.defaultValue()), this),
      log2Factor(static_cast<int>(oversamplingParameter.defaultValue()), this),
      shared(environment.get()),
      crossovers(makeControls(environment.get(), crossoverParameters, log2OfHz)),
      drives(makeControls(environment.get(), driveParameters, fractionOf)) {
    bypassParameter = &bypassSwitch;
    bandsParameter.addProperty(&bandCount);
    oversamplingParameter.addProperty(&log2Factor);
    for (int i = 0; i < getChannelCount(); ++i)
        addGraph();
    if (graphs.size() == 2) graphs[1]->link(*graphs[0]);
    for (std::size_t band = 0; band < controllers.size(); ++band) {
        styles.addTo(controllers[band]);
        styleParameters[band]->addProperty(&controllers[band].style);
    }
    updateBands();
    updateFactor();
    applyParameters();
}

void BandsProcessor::addGraph() {
    Channel& channel = addChannel(std::make_unique<Channel>(this));
    const auto firstSeed = static_cast<std::uint32_t>(channel.index * maxBands + 1);
    auto graph = std::make_unique<ChannelGraph>(shared, &channel.input, firstSeed);
    for (int i = 0; const auto& crossover : crossovers)
        graph->split.getCrossover(i++).frequency.setSource(crossover.get());
    for (std::size_t i = 0; const auto& band : graph->bands) {
        band->distortion.drive.setSource(drives[i].get());
        controllers[i++].addProcessors(&band->distortion, &band->cabinet);
    }
    channel.output = &graph->sum;
    graphs.push_back(std::move(graph));
}

void BandsProcessor::sampleRateChanged() {
    GenericPluginProcessor::sampleRateChanged();
    updateFactor();  // a high rate leaves less room for oversampling
}

void BandsProcessor::propertyChanged(AbstractProperty* property) {
    if (property == &bandCount) updateBands();
    if (property == &log2Factor) updateFactor();
}

void BandsProcessor::updateBands() noexcept CINDER_REALTIME {
    for (int band = shared.model.bandCount; band < bandCount; ++band)
        refreshBand(static_cast<std::size_t>(band));
    shared.model.bandCount.assign(bandCount);
    for (const auto& graph : graphs)
        for (int band = 0; band < maxBands; ++band)
            graph->sum.input(band).gain.assign(band < bandCount ? 1.0f : 0.0f);
}

/// Installs the style anew in a band that has not run for a while, and that may hold up to half a
/// second of what it heard then. One that is still fading goes on.
void BandsProcessor::refreshBand(std::size_t band) noexcept CINDER_REALTIME {
    const DistortionProcessor& distortion = graphs.front()->bands[band]->distortion;
    if (distortion.getLastBlockId() != environment->getBlockId()) controllers[band].applyStyle();
}

/// The converters have no use for what they hold of another factor.
void BandsProcessor::updateFactor() noexcept CINDER_REALTIME {
    shared.converterStyle.setFactor(1 << log2Factor.get());
    for (const auto& graph : graphs)
        for (const auto& band : graph->bands)
            band->distortion.resetConverters();
    setLatency(shared.converterStyle.getLatency(shared.converterStyle.getFactor()));
}

}  // namespace cinder
