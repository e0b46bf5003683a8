#pragma once

#include <cstdint>
#include <memory>

#include "core/Realtime.h"
#include "distortion/curves/VectorClip.h"

namespace cinder {

/// Shapes a block with one of the curves: out = clip(in, curve, power, negativeScale).
/// Shape   any n from 0, any alignment; out may be in
/// Range   that of clip
/// State   none beside the three settings, which are fixed
class WaveShaper {
public:
    WaveShaper(std::int32_t curve, float power, float negativeScale);
    virtual ~WaveShaper() = default;
    WaveShaper(const WaveShaper&) = delete;
    WaveShaper& operator=(const WaveShaper&) = delete;

    /// Here with the scalar reference; the derived classes have a block function for it. [audio]
    virtual void process(const float* in, float* out, int n) noexcept CINDER_REALTIME;

    const float negativeScale;
    const float power;
    const std::int32_t curve;
};

/// A curve with power and negativeScale of 1 whose block function is F.
template <BlockFunction F>
class WaveShaperVec final : public WaveShaper {
public:
    explicit WaveShaperVec(std::int32_t curve) : WaveShaper(curve, 1.0f, 1.0f) {}

    void process(const float* in, float* out, int n) noexcept CINDER_REALTIME override {
        F(in, out, n);
    }
};

/// A curve with any power and negativeScale whose block function is F.
template <PowerBlockFunction F>
class WaveShaperVecPB final : public WaveShaper {
public:
    using WaveShaper::WaveShaper;

    void process(const float* in, float* out, int n) noexcept CINDER_REALTIME override {
        F(in, out, n, power, negativeScale);
    }
};

/// The fastest shaper there is for these settings: a vector one where the curve has a block
/// function, and the plain WaveShaper elsewhere. [any, allocates]
std::unique_ptr<WaveShaper> makeWaveShaper(std::int32_t curve, float power, float negativeScale);

}  // namespace cinder
