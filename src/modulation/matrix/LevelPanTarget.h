#pragma once

#include "modulation/matrix/ModulationMatrix.h"
#include "wave/FloatParameterSource.h"
#include "wave/MultiProducer.h"

namespace cinder {

/// A level and a pan that together are two channel gains, of level L and pan P in -1..1:
///
///     gain 0 = L - max(P, 0) * L
///     gain 1 = min(P, 0) * L + L
///
/// so pan turns one side down and leaves the other at L. As long as nothing modulates them the
/// gains themselves are smoothed, each on a ramp of its own.
/// Range   gains 0..maximum of the level, where level itself may stop short of 0
class LevelPanTarget final : public wave::Component, public ModulationMatrix::SecondaryTarget {
public:
    class VoiceController;

    LevelPanTarget(ModulationMatrix* matrix, int levelTarget, int panTarget);
    ~LevelPanTarget();
    LevelPanTarget(const LevelPanTarget&) = delete;
    LevelPanTarget& operator=(const LevelPanTarget&) = delete;

    void targetChanged() noexcept CINDER_REALTIME override;

private:
    bool isModulated() const noexcept CINDER_REALTIME;

    ModulationMatrix* const matrix;
    const int levelTarget, panTarget;
    const ModulationMatrix::Target& level;
    const ModulationMatrix::Target& pan;
    wave::FloatParameterSource leftGain, rightGain;
};

/// The two gains as blocks, one output a channel.
/// Shape   the level's own block for both channels where pan rests in the middle
class LevelPanTarget::VoiceController final : public wave::MultiProducer {
public:
    explicit VoiceController(LevelPanTarget* target);

    void render(wave::BasicBlock<float>** blocks, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

private:
    void handOn(wave::BasicBlock<float>** blocks, wave::Producer* first,
                wave::Producer* second) noexcept CINDER_REALTIME;

    LevelPanTarget* const target;
    ModulationMatrix::GlobalTargetController* const level;
    ModulationMatrix::GlobalTargetController* const pan;
};

}  // namespace cinder
