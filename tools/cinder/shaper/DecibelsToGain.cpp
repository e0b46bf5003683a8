#include "cinder/shaper/DecibelsToGain.h"

#include "core/Constants.h"

#include <algorithm>
#include <cmath>

namespace cinder {

namespace {

float gainOf(float decibels) noexcept CINDER_REALTIME {
    return static_cast<float>(std::exp(static_cast<double>(decibels) * logPerDecibel));
}

}  // namespace

DecibelsToGain::DecibelsToGain(wave::Environment* environment, wave::Producer* decibels)
    : Filter(environment) {
    setInput(decibels);
}

void DecibelsToGain::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out,
                             int numSamples, unsigned) noexcept CINDER_REALTIME {
    const bool constant = input->isConstant();
    setConstant(constant);
    const float* const decibels = in->data();
    if (constant)
        std::fill_n(out->data(), numSamples, gainOf(decibels[0]));
    else
        std::transform(decibels, decibels + numSamples, out->data(), gainOf);
}

}  // namespace cinder
