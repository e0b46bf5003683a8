#include "distortion/drive/BitCrusher.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "distortion/drive/Drive.h"

namespace cinder {

namespace {

constexpr float fullDepth = 24.0f;
constexpr double fullScale = 8388608.0;  // 2^23

/// Without the library, which has no instruction for it on the oldest processors. From 2^52 on
/// there are only whole numbers.
double floorOf(double x) noexcept CINDER_REALTIME {
    if (!(std::abs(x) < 0x1p52)) return x;
    const auto whole = static_cast<double>(static_cast<std::int64_t>(x));
    return whole > x ? whole - 1.0 : whole;
}

/// trunc(d^2 longest), within what a counter holds; a NaN is 0.
std::int32_t holdSamplesOf(float d, float longest) noexcept CINDER_REALTIME {
    constexpr float most = 0x1p30f;
    const float samples = d * d * longest;
    return samples > 0.0f ? static_cast<std::int32_t>(std::min(samples, most)) : 0;
}

bool isAllZero(const float* samples, int count) noexcept CINDER_REALTIME {
    return std::all_of(samples, samples + count, [](float sample) { return sample == 0.0f; });
}

}  // namespace

/// What becomes of the samples that are taken at one drive.
struct BitCrusher::Crushing {
    std::int32_t holdSamples;
    double scale;
    double inverseScale;
    float limit;
    bool isLimited;

    /// In double: at full depth a float would have no bit left for the half.
    float of(float x) const noexcept CINDER_REALTIME {
        const auto y =
            static_cast<float>(floorOf(scale * static_cast<double>(x) + 0.5) * inverseScale);
        return isLimited ? std::copysign(std::min(std::abs(y), limit), y) : y;
    }
};

BitCrusher::BitCrusher(wave::Environment* environment) : Filter(environment), drive(environment) {
    makeResettable();
}

void BitCrusher::reset() noexcept CINDER_REALTIME {
    holdCounter = -1;
    heldValue = 0.0f;
}

BitCrusher::Crushing BitCrusher::crushingAt(float d) const noexcept CINDER_REALTIME {
    const float lostBits = fullDepth - bitDepth;
    const bool isFull = std::abs(lostBits) <= sameValue;
    double scale = fullScale;
    if (!isFull)
        scale *= std::exp2(-std::sqrt(static_cast<double>(d)) * static_cast<double>(lostBits));
    return {holdSamplesOf(d, maxHoldSamples), scale, 1.0 / scale, 1.0f - d * 0.75f, limitOutput};
}

void BitCrusher::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                         unsigned) noexcept CINDER_REALTIME {
    const float* const drives = drive.pull(numSamples)->data();
    if (drive.isConstant())
        crushStanding(in->data(), out->data(), numSamples, crushingAt(limitedDrive(drives[0])));
    else
        crushMoving(in->data(), drives, out->data(), numSamples);
    // What was held may outlast the sound.
    const bool isSilence = input->isSilent() && isAllZero(out->data(), numSamples);
    if (isSilence) passOn(environment->getZeroBlock());
    setConstant(isSilence);
}

void BitCrusher::crushStanding(const float* in, float* out, int numSamples,
                               const Crushing& crushing) noexcept CINDER_REALTIME {
    if (crushing.holdSamples <= 1) {
        // What was held under a longer hold is over by now, and no sample stays for a second one.
        for (int i = 0; i < numSamples; ++i)
            out[i] = crushing.of(in[i]);
        if (numSamples > 0) heldValue = out[numSamples - 1];
        holdCounter = 1;
        return;
    }
    for (int i = 0; i < numSamples;) {
        if (holdCounter < 0 || holdCounter >= crushing.holdSamples) {
            heldValue = crushing.of(in[i]);
            holdCounter = 0;
        }
        const int run = std::min(crushing.holdSamples - holdCounter, numSamples - i);
        std::fill_n(out + i, run, heldValue);
        holdCounter += run;
        i += run;
    }
}

void BitCrusher::crushMoving(const float* in, const float* drives, float* out,
                             int numSamples) noexcept CINDER_REALTIME {
    for (int i = 0; i < numSamples; ++i) {
        const float d = limitedDrive(drives[i]);
        if (holdCounter < 0 || holdCounter >= holdSamplesOf(d, maxHoldSamples)) {
            heldValue = crushingAt(d).of(in[i]);
            holdCounter = 0;
        }
        ++holdCounter;
        out[i] = heldValue;
    }
}

}  // namespace cinder
