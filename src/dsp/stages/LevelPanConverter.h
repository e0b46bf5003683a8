#pragma once

#include "core/Property.h"
#include "wave/FloatParameterBus.h"
#include "wave/MultiProducer.h"

namespace cinder {

/// A level and a pan as the gains of two channels: L - max(P, 0) L and L + min(P, 0) L.
/// Shape   two outputs; in the middle both are the level's own block
/// Range   pan -1..1: at either end one channel is silent and the other at L
/// State   that of level and pan
class LevelPanConverter final : public wave::MultiProducer {
public:
    explicit LevelPanConverter(wave::Environment* environment);

    void render(wave::BasicBlock<float>** blocks, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

    Property<bool> invert{false};  // both gains negated
    wave::FloatParameterBus level;
    wave::FloatParameterBus pan;
};

}  // namespace cinder
