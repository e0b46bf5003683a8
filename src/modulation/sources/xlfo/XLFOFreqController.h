#pragma once

#include "core/Property.h"
#include "modulation/sources/xlfo/XLFO.h"
#include "modulation/vocabulary/SourceParameters.h"
#include "wave/FloatParameterBus.h"

namespace cinder {

/// The frequency of an XLFO: its own, modulated, or the song's,
///     tempo / (240 * bars of the mode) * offset
/// where a bar has four quarter notes. In step with the song, its position sets the phase as well:
///     base = (position - reference) / (4 * bars of the mode) * offset
/// unless the offset is moving, when a phase that follows both would race.
///
/// Shape   1..maxBlockSize samples; without sync the block of the modulated frequency, handed on
/// Range   0..1000 Hz times an offset of 0.5..2; a tempo of 0 counts as 120
/// State   the last tempo and position
/// Errors  none; a tempo or position that isn't finite is ignored
class XLFOFreqController final : public wave::Producer, public PropertyOwner {
public:
    using SyncMode = cinder::SyncMode;

    /// Becomes the frequency of `xlfo`; neither is owned.
    XLFOFreqController(XLFO* xlfo, wave::Producer* modulatedFrequency);

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;
    /// Another mode is in force at once: a frequency that went there on a ramp would fall behind
    /// the song, and be set right block after block.
    void propertyChanged(AbstractProperty* property) override;
    /// From here on the song has this tempo in quarter notes a minute and this position in quarter
    /// notes. [audio]
    void setTempo(float newTempo, float newPosition) noexcept CINDER_REALTIME;

    wave::FloatParameterBus offset;  // factor
    Property<SyncMode> syncMode{SyncMode::Free, this};

private:
    void followPosition(float firstOffset) noexcept CINDER_REALTIME;
    float syncedHz() const noexcept CINDER_REALTIME;
    float barsPerCycle() const noexcept CINDER_REALTIME;

    XLFO* xlfo;
    wave::Producer* modulatedFrequency;
    wave::FloatParameterSource syncFrequency;
    float tempo = 0.0f;  // 0 until the host has told one
    float position = 0.0f;
    float heldPosition = 0.0f;     // what the last synchronisation used
    bool positionPending = false;  // `position` is new
    int filled = 0;                // leading samples of the own block that hold `filledValue`
    float filledValue = 0.0f;
};

}  // namespace cinder
