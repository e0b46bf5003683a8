#include "dsp/sr/IIRConverter.h"

#include <algorithm>

namespace cinder::sr {

namespace {

constexpr std::int32_t stateSize = 128;
static_assert(stateSize >= 4 * maxStages * HalfBandStage::maxCoefficients / 2);

}  // namespace

IIRConverter::IIRConverter(IIRConverterStyle* style)
    : ConverterBase(style->getEnvironment()), style(style), state(stateSize) {
    style->getFactor();  // the design is made here rather than in the first block
}

void IIRConverter::reset() noexcept CINDER_REALTIME {
    std::fill_n(state.data(), state.size(), 0.0f);
    style->getFactor();
}

void IIRConverter::scalePast(float gain) noexcept CINDER_REALTIME {
    for (float* held = state.data(); held != state.data() + state.size(); ++held)
        *held = scaled(*held, gain);
}

/// Bounded, so that no number of gains makes an infinity, which a filter would keep.
float IIRConverter::scaled(float held, float gain) noexcept CINDER_REALTIME {
    constexpr float largest = 1e9f;
    return std::clamp(held * gain, -largest, largest);
}

}  // namespace cinder::sr
