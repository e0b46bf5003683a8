#include "distortion/drive/NoiseFilter.h"

#include <random>

#include "distortion/drive/NoiseKernels.h"

namespace cinder {

namespace {

constexpr float rangeDb = 60.0f;
constexpr float lowestGain = 0.001f * 1.01f;  // -60 dB, and what the fall never quite covers

std::uint32_t randomSeed() {
    return std::random_device()() + 1u;
}

}  // namespace

NoiseFilter::NoiseFilter(wave::Environment* environment, const Capacitor::Style* capacitorStyle)
    : NoiseFilter(environment, capacitorStyle, randomSeed()) {}

NoiseFilter::NoiseFilter(wave::Environment* environment, const Capacitor::Style* capacitorStyle,
                         std::uint32_t seed)
    : Filter(environment),
      level(environment),
      inputForwarder(environment, this),
      peakHold(environment),
      detector(environment),
      capacitor(environment, capacitorStyle),
      seed(seed) {
    const auto set = [](wave::FloatParameterBus& bus, float value) {
        bus.getParameter().setValue(value, 0.0f);
    };
    peakHold.setInput(&inputForwarder);
    set(peakHold.hold, 2.0f);  // ms
    detector.setInput(&peakHold);
    detector.gainChangeDomain = Detector::GainChangeDomain::Linear;
    detector.purpose = Detector::Purpose::Expand;
    set(detector.ratio, 1.5f);
    set(detector.threshold, threshold);
    set(detector.kneeWidth, 0.0f);
    set(detector.range, rangeDb);
    capacitor.setInput(&detector);
    set(capacitor.release, 0.25f);  // seconds
}

void NoiseFilter::reset() noexcept CINDER_REALTIME {
    peakHold.reset();
    detector.reset();
    capacitor.reset();
}

void NoiseFilter::propertyChanged(AbstractProperty* property) {
    if (property == &threshold) detector.threshold.assign(threshold);
}

void NoiseFilter::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                          unsigned) noexcept CINDER_REALTIME {
    const float* const levels = level.pull(numSamples)->data();
    const float* const gains = capacitor.pull(numSamples)->data();
    const bool isSilence = input->isSilent() && capacitor.isConstant() && gains[0] <= lowestGain;
    setConstant(isSilence);
    if (isSilence) {
        seed = noiseKernels->skip(seed, numSamples);
        return passOn(environment->getZeroBlock());
    }
    seed = noiseKernels->addNoise({in->data(), levels, gains, lowestGain}, out->data(), numSamples,
                                  seed);
}

}  // namespace cinder
