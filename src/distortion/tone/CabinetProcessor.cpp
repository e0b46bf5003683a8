#include "distortion/tone/CabinetProcessor.h"

#include <algorithm>

#include "core/simd/BlockMath.h"

namespace cinder {

namespace {

constexpr double longestTapMs = 10.0;

}  // namespace

CabinetProcessor::CabinetProcessor(wave::Environment* environment)
    : FilterBase(environment, true),
      inputForwarder(environment, this),
      multiDelay(environment),
      filters(environment, &multiDelay, maxFilters) {
    multiDelay.setInput(&inputForwarder);
}

void CabinetProcessor::render(wave::BasicBlock<float>*, int numSamples,
                              unsigned) noexcept CINDER_REALTIME {
    passOn(filters.pull(numSamples));
    setConstant(filters.isConstant());
}

CabinetProcessor::MultiDelay::MultiDelay(wave::Environment* environment)
    : Filter(environment), delay(environment, samplesOf(longestTapMs)), scratch(environment) {
    makeResettable();
}

void CabinetProcessor::MultiDelay::addTap(const TapRow& tap) noexcept CINDER_REALTIME {
    if (count == maxTaps) return;
    taps[count++] = tap;
    delay.clear();
}

void CabinetProcessor::MultiDelay::reset() noexcept CINDER_REALTIME {
    delay.setMaxDelay(samplesOf(longestTapMs));
    delay.clear();
}

void CabinetProcessor::MultiDelay::process(wave::BasicBlock<float>* in,
                                           wave::BasicBlock<float>* out, int numSamples,
                                           unsigned) noexcept CINDER_REALTIME {
    setConstant(count == 0 && input->isConstant());
    if (count == 0) return passOn(in);

    const std::uint64_t position = environment->getPosition();
    if (position != expectedPosition) delay.clear();
    expectedPosition = position + static_cast<std::uint64_t>(numSamples);

    const int longest = samplesOf(longestTapMs);
    if (silentSamples >= longest && input->isSilent()) {
        setConstant(true);
        return passOn(in);
    }
    silentSamples = input->isSilent() ? std::min(silentSamples, longest) + numSamples : 0;
    delay.write(in->data(), numSamples);
    std::copy_n(in->data(), numSamples, out->data());
    for (int i = 0; i < count; ++i) {
        delay.read(samplesOf(static_cast<double>(taps[i].ms)), scratch.data(), numSamples);
        simd::addScaled(scratch.data(), taps[i].gain, out->data(), numSamples);
    }
}

std::int32_t CabinetProcessor::MultiDelay::samplesOf(double milliseconds) const noexcept
    CINDER_REALTIME {
    return static_cast<std::int32_t>(milliseconds * 0.001 *
                                     static_cast<double>(environment->getSampleRate()));
}

}  // namespace cinder
