#include "cinder/shaper/ShaperProcessor.h"

#include "processor/frame/Channel.h"

namespace cinder {

namespace {

constexpr const ParameterRow& rowOf(ShaperParameterId id) {
    return shaperParameterRows[static_cast<std::size_t>(id)];
}

FloatRange rangeOf(ShaperParameterId id) {
    const ParameterRow& row = rowOf(id);
    return {row.minimum, row.maximum, row.defaultValue};
}

IndexRange stepsOf(ShaperParameterId id) {
    const ParameterRow& row = rowOf(id);
    return {static_cast<std::int32_t>(row.minimum), static_cast<std::int32_t>(row.maximum),
            static_cast<std::int32_t>(row.defaultValue)};
}

}  // namespace

ShaperProcessor::ShaperProcessor(std::int32_t channelLayout)
    : GenericPluginProcessor(channelLayout),
      driveParameter(this, rowOf(driveId).name, rangeOf(driveId)),
      curveParameter(this, rowOf(curveId).name, stepsOf(curveId)),
      oversamplingParameter(this, rowOf(oversamplingId).name, stepsOf(oversamplingId)),
      levelParameter(this, rowOf(levelId).name, rangeOf(levelId)),
      bypassSwitch(this, rowOf(bypassId).name, stepsOf(bypassId)),
      initialized(this),
      curve(static_cast<int>(curveParameter.defaultValue()), this),
      log2Factor(static_cast<int>(oversamplingParameter.defaultValue()), this),
      style(environment.get()),
      driveDb(environment.get(), driveParameter.defaultValue(), driveParameter.minimum(),
              driveParameter.maximum()),
      levelDb(environment.get(), levelParameter.defaultValue(), levelParameter.minimum(),
              levelParameter.maximum()),
      drive(environment.get(), &driveDb),
      level(environment.get(), &levelDb) {
    bypassParameter = &bypassSwitch;
    driveParameter.addTarget(&driveDb.parameter);
    levelParameter.addTarget(&levelDb.parameter);
    curveParameter.addProperty(&curve);
    oversamplingParameter.addProperty(&log2Factor);
    for (int i = 0; i < numCurves; ++i)
        shapers.push_back(makeWaveShaper(i, 1.0f, 1.0f));
    for (int i = 0; i < getChannelCount(); ++i)
        addStage();
    updateCurve();
    updateFactor();
    applyParameters();
}

void ShaperProcessor::addStage() {
    Channel& channel = addChannel(std::make_unique<Channel>(this));
    auto stage = std::make_unique<ShaperStage>(environment.get(), &style);
    stage->setInput(&channel.input);
    stage->drive.setSource(&drive);
    stage->level.setSource(&level);
    channel.output = stage.get();
    stages.push_back(std::move(stage));
}

void ShaperProcessor::sampleRateChanged() {
    GenericPluginProcessor::sampleRateChanged();
    updateFactor();  // a high rate leaves less room for oversampling
}

void ShaperProcessor::propertyChanged(AbstractProperty* property) {
    if (property == &curve) updateCurve();
    if (property == &log2Factor) updateFactor();
}

void ShaperProcessor::updateCurve() noexcept CINDER_REALTIME {
    for (const auto& stage : stages)
        stage->setShaper(shapers[static_cast<std::size_t>(curve.get())].get());
}

void ShaperProcessor::updateFactor() noexcept CINDER_REALTIME {
    style.setFactor(1 << log2Factor.get());
    setLatency(style.getLatency(style.getFactor()));
}

}  // namespace cinder
