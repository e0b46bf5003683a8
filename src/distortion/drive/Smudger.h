#pragma once

#include <cstdint>

#include "core/Property.h"
#include "wave/FloatParameterBus.h"

namespace cinder {

/// Smears the sound: records slices of 1 / rate seconds into two grains in turns, plays each as a
/// loop, and fades from the one over to the other.
///   y = clamp((1 - w) active + w other, -1, 1),  w = position / period
/// A fade takes period = 0.25 / rate + d^2 seconds, d being the drive. Behind it the active grain
/// records anew and the other one becomes active.
///
/// Shape   one channel
/// Range   drive 0..1, limited; a rate below 5 Hz is 5 Hz; |y| <= 1
/// State   the grains and the fade between them; reset() starts both anew. The same bits for any
///         cut of the block while the drive stands still. A drive that moves is read where a block
///         or a fade begins, so that the lengths of the fades hang on the sub-block
/// Errors  none; a NaN is silent until its slice is recorded over. The first reset() at a new rate
///         allocates, no other call does
class Smudger final : public wave::Filter {
public:
    explicit Smudger(wave::Environment* environment);

    void reset() noexcept CINDER_REALTIME override;  ///< [audio]

    wave::FloatParameterBus drive;
    Property<float> rate{11.0f};  // Hz

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    /// A slice of the sound and its player. The first pass plays the slice; later ones loop its
    /// second half, fading into what leads up to that half, so that the loop has no step.
    class Grain {
    public:
        explicit Grain(wave::Environment* environment) : output(environment) {}

        void resize(std::int32_t longestLoop);
        std::int32_t longestLoop() const noexcept CINDER_REALTIME { return buffer.size(); }
        void restart(std::int32_t newLoopLength) noexcept CINDER_REALTIME;
        void store(const float* in, int numSamples) noexcept CINDER_REALTIME;
        const float* render(int numSamples) noexcept CINDER_REALTIME;

    private:
        void prepareFades(std::int32_t count) noexcept CINDER_REALTIME;

        wave::BasicBlock<float> buffer{0};
        std::int32_t position = 0;
        std::int32_t loopLength = 0;
        std::int32_t written = 0;
        wave::BasicBlock<float> output;
        // The fade at the end of the loop, worked out when the first pass of a length comes by.
        wave::BasicBlock<float> fades{0};
        std::int32_t numFades = 0;
    };

    void fitToSampleRate();
    double sampleRate() const noexcept CINDER_REALTIME;
    std::int32_t periodAt(float d) const noexcept CINDER_REALTIME;
    void restart(Grain& grain) noexcept CINDER_REALTIME;
    void crossfade(float* out, int numSamples, std::int32_t period) noexcept CINDER_REALTIME;

    Grain grains[2];
    std::int32_t activeGrain = 0;
    std::int32_t crossfadePosition = 0;
};

}  // namespace cinder
