#pragma once

#include "wave/FloatParameterBus.h"
#include "wave/MuteController.h"

namespace cinder {

/// out = in * level, times a second level where one is set.
/// Shape   one channel; at level 0 or while muted the output is silence and the input isn't pulled,
///         at level 1 the input is handed on
/// State   that of the level
class VolumeFilter final : public wave::Filter {
public:
    explicit VolumeFilter(wave::Environment* environment)
        : Filter(environment), level(environment, 1.0f) {}
    VolumeFilter(wave::Environment* environment, float minimum, float maximum)
        : Filter(environment), level(environment, 1.0f, minimum, maximum) {}

    void setSecondLevel(wave::Producer* producer) { secondLevel = producer; }
    void setMuteController(wave::MuteController* controller) { muteController = controller; }

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

    wave::FloatParameterBus level;

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    void silence() noexcept CINDER_REALTIME;

    wave::Producer* secondLevel = nullptr;           // not owned
    wave::MuteController* muteController = nullptr;  // not owned
};

}  // namespace cinder
