#include "distortion/curves/WaveShaper.h"

#include <cmath>

#include "core/Constants.h"
#include "distortion/curves/Clip.h"

namespace cinder {

namespace {

using Made = std::unique_ptr<WaveShaper>;

template <BlockFunction F>
Made makePlain(std::int32_t curve) {
    return std::make_unique<WaveShaperVec<F>>(curve);
}

template <PowerBlockFunction F>
Made makeWithPower(std::int32_t curve, float power, float negativeScale) {
    return std::make_unique<WaveShaperVecPB<F>>(curve, power, negativeScale);
}

// The curves that have block functions: for power and negativeScale of 1, and for any.
struct Row {
    std::int32_t curve;
    Made (*plain)(std::int32_t curve);
    Made (*withPower)(std::int32_t curve, float power, float negativeScale);
};
constexpr Row vectorRows[] = {
    {arcTangentCurve, makePlain<vectorClipArcTanFast>, makeWithPower<vectorClipArcTanPBFast>},
    {divisionByMagnitudeCurve, makePlain<vectorClipDivAbsFast>,
     makeWithPower<vectorClipDivAbsPBFast>},
    {sineCurve, makePlain<vectorClipSineFast>, nullptr},
    {polynomeOrder2Curve, makePlain<vectorClipPolynomeOrder2Fast>, nullptr},
    {polynomeOrder3Curve, makePlain<vectorClipPolynomeOrder3Fast>, nullptr},
    {tubeCurve, makePlain<vectorClipTubeFast>, nullptr},
    {rectifyCurve, makePlain<vectorClipRectifyFast>, nullptr},
};

bool isOne(float x) {
    return std::fabs(x - 1.0f) <= sameValue;
}

}  // namespace

WaveShaper::WaveShaper(std::int32_t curve, float power, float negativeScale)
    : negativeScale(negativeScale), power(power), curve(curve) {}

void WaveShaper::process(const float* in, float* out, int n) noexcept CINDER_REALTIME {
    for (int i = 0; i < n; ++i)
        out[i] = clip(in[i], curve, power, negativeScale);
}

Made makeWaveShaper(std::int32_t curve, float power, float negativeScale) {
    const bool isPlain = isOne(power) && isOne(negativeScale);
    for (const Row& row : vectorRows) {
        if (row.curve != curve) continue;
        if (isPlain) return row.plain(curve);
        if (row.withPower != nullptr) return row.withPower(curve, power, negativeScale);
    }
    return std::make_unique<WaveShaper>(curve, power, negativeScale);
}

}  // namespace cinder
