#pragma once

#include <cstdint>

#include "core/Property.h"
#include "modulation/sources/dynamics/Capacitor.h"
#include "modulation/sources/dynamics/Detector.h"
#include "modulation/sources/dynamics/PeakHold.h"
#include "wave/Forwarders.h"

namespace cinder {

/// Adds a little noise that follows the input: y = x + level g (r1 + r2), triangular between -1 and
/// 1 times the level. g is 1 while the input's peaks of the last 2 ms are above the threshold, and
/// falls by half a dB for every dB below, 60 dB at most, in 0.25 seconds a decade.
///
/// r1 and r2 are two steps of seed = 1103515245 seed + 12345, its lower 31 bits taken as -0.5..0.5.
///
/// Shape   one channel
/// Range   level linear from 0, threshold in dB. A silent sample gets no noise once g is at its
///         lowest, so that silence ends as silence
/// State   the seed, random for every instance, and the state of the dynamics; the same bits for
///         any cut of the block
/// Errors  none; a NaN in the input lasts to the end of its block
class NoiseFilter final : public wave::Filter, public PropertyOwner {
public:
    NoiseFilter(wave::Environment* environment, const Capacitor::Style* capacitorStyle);
    /// With noise that can be foreseen.
    NoiseFilter(wave::Environment* environment, const Capacitor::Style* capacitorStyle,
                std::uint32_t seed);

    /// The dynamics; the noise goes on. [audio]
    void reset() noexcept CINDER_REALTIME override;
    void propertyChanged(AbstractProperty* property) override;  ///< [audio]

    /// Of the other channel, whose dynamics run beside these.
    void setPartner(NoiseFilter& other) { capacitor.setPartner(&other.capacitor); }

    Property<float> threshold{-48.0f, this};  // dB
    wave::FloatParameterBus level;

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    wave::InputForwarder inputForwarder;
    PeakHold peakHold;
    Detector detector;
    Capacitor capacitor;
    std::uint32_t seed;
};

}  // namespace cinder
