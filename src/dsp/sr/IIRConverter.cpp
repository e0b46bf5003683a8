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

/// Every section passes a constant as it is.
void IIRConverter::settle(float value) noexcept CINDER_REALTIME {
    std::fill_n(state.data(), state.size(), value);
}

bool IIRConverter::isAtRest() const noexcept CINDER_REALTIME {
    return std::all_of(state.data(), state.data() + state.size(), isNothing);
}

}  // namespace cinder::sr
