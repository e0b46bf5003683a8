#pragma once

#include "cinder/shaper/DecibelsToGain.h"
#include "cinder/shaper/ShaperParameters.h"
#include "cinder/shaper/ShaperStage.h"
#include "core/Property.h"
#include "distortion/curves/WaveShaper.h"
#include "dsp/sr/IIRConverterStyle.h"
#include "params/FloatParamPluginParameter.h"
#include "params/PropPluginParameter.h"
#include "processor/frame/GenericPluginProcessor.h"

#include <memory>
#include <vector>

namespace cinder {

/// A saturation: one curve per channel, oversampled, between two gains that all channels share.
///
///     input -> x drive -> up -> curve -> down -> x level -> output
///                 |                                 |
///            dB to gain                        dB to gain
///                 |                                 |
///          "Drive", ramped                   "Level", ramped
///
/// Parameters: see ShaperParameters.h. A change of the curve takes effect at once; one of the
/// factor changes the latency too, and both are meant for while the music rests.
class ShaperProcessor final : public GenericPluginProcessor, private PropertyOwner {
public:
    explicit ShaperProcessor(std::int32_t channelLayout);

protected:
    void sampleRateChanged() override;

private:
    void propertyChanged(AbstractProperty* property) override;
    void addStage();
    void updateCurve() noexcept CINDER_REALTIME;
    void updateFactor() noexcept CINDER_REALTIME;

    FloatParamPluginParameter driveParameter;
    PropPluginParameter<int> curveParameter;
    PropPluginParameter<int> oversamplingParameter;
    FloatParamPluginParameter levelParameter;
    IndexedPluginParameter<bool> bypassSwitch;
    Initialized initialized;

    Property<int> curve;
    Property<int> log2Factor;
    sr::IIRConverterStyle style;
    wave::FloatParameterSource driveDb;
    wave::FloatParameterSource levelDb;
    DecibelsToGain drive;
    DecibelsToGain level;
    std::vector<std::unique_ptr<WaveShaper>> shapers;  // by curve
    std::vector<std::unique_ptr<ShaperStage>> stages;  // by channel
};

}  // namespace cinder
