#pragma once

#include "dsp/stages/ValueConverters.h"
#include "dsp/stages/VolumeFilter.h"
#include "modulation/sources/dynamics/Capacitor.h"
#include "modulation/sources/dynamics/Detector.h"
#include "wave/FloatParameterBus.h"
#include "wave/Forwarders.h"

namespace cinder {

/// A band's Dynamics: from the level of the plug-in's input to a gain.
///
///     level - dB - detector - capacitor - x dynamics - gain
///
/// The detector gives what the level lacks below -6 dB, softly and up to 36 dB. That builds up in
/// half a second and is gone as soon as the level is back. With dynamics 1 the quiet is raised by
/// all of it, which squashes; with -1 it is lowered, which expands.
/// Shape   one channel, a linear level in, a linear gain out; dynamics 0 gives a constant 1, and
///         nothing before it runs
/// Range   dynamics -1..1
/// State   that of the capacitor
class CinderCompander final : public wave::FilterBase {
public:
    /// The style lives longer.
    CinderCompander(wave::Environment* environment, const Capacitor::Style* capacitorStyle);

    /// Hears what `other` hears, which lives as long: its detector does for both, and mostly its
    /// capacitor.
    void hearWith(CinderCompander& other);

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

    wave::FloatParameterBus dynamics;

private:
    wave::FloatParameterBusForwarder dynamicsForwarder;
    Capacitor capacitor;
    DBConverter toDecibels, toGain;
    Detector detector;
    wave::InputForwarder inputForwarder;
    VolumeFilter scaler;
};

}  // namespace cinder
