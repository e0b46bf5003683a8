#include "dsp/stages/ValueConverters.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"

namespace cinder {

namespace {

constexpr float logOfDecibel = static_cast<float>(logPerDecibel);

float decibels(float x) {
    constexpr float floorDb = -180.0f;
    constexpr float quietest = 1e-10f;  // below the floor, and no argument for a logarithm
    const float magnitude = std::abs(x);
    return magnitude > quietest ? std::max(20.0f * std::log10(magnitude), floorDb) : floorDb;
}

float gainOfDecibels(float db) {
    return std::exp(db * logOfDecibel);
}

/// The two branches meet at -0.6 to a part in a million: 0.2^2 * 2.0794094 is -21.6 dB.
float gainOfControl(float x) {
    constexpr float parabolaEnd = 0.2f, parabolaScale = 2.0794094f, decibelsPerUnit = 36.0f;
    const float v = (x + 1.0f) * 0.5f;
    return v < parabolaEnd ? v * v * parabolaScale : gainOfDecibels(x * decibelsPerUnit);
}

}  // namespace

void ValueConverter::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out,
                             int numSamples, unsigned) noexcept CINDER_REALTIME {
    setConstant(input->isConstant());
    if (!isConstant()) return convert(in->data(), out->data(), numSamples);
    convert(in->data(), out->data(), 1);
    std::fill_n(out->data(), numSamples, (*out)[0]);
}

void GainLevelConverter::convert(const float* in, float* out,
                                 int numSamples) noexcept CINDER_REALTIME {
    std::transform(in, in + numSamples, out, gainOfControl);
}

void DBConverter::convert(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME {
    const auto map = [&](auto f) { std::transform(in, in + numSamples, out, f); };
    switch (conversion) {
        case Conversion::ToDecibels:
            return map(decibels);
        case Conversion::ToGain:
            return map(gainOfDecibels);
        case Conversion::LossToDecibels:
            return map([](float x) { return -decibels(1.0f - x); });
        case Conversion::DecibelsToLoss:
            return map([](float x) { return 1.0f - gainOfDecibels(-x); });
    }
}

}  // namespace cinder
