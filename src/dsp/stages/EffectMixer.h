#pragma once

#include "core/Property.h"
#include "wave/FloatParameterBus.h"

namespace cinder {

/// Dry against wet, by a mix from -1 (dry) to 1 (wet).
/// Shape   one channel; at either end the other input is not pulled, and nothing is copied
/// State   that of the mix
class EffectMixer final : public wave::Source {
public:
    enum class PanningLaw : std::int32_t {
        BothFull = 0,    ///< both at full gain in the middle
        Linear = 1,      ///< the gains sum to 1
        EqualPower = 2,  ///< the squares of the gains sum to 1
    };

    EffectMixer(wave::Environment* environment, wave::Producer* dry, wave::Producer* wet)
        : Source(environment), mix(environment, 0.0f, -1.0f, 1.0f), dry(dry), wet(wet) {}

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

    wave::FloatParameterBus mix;
    Property<PanningLaw> panningLaw{PanningLaw::BothFull};

private:
    struct Gains {
        float dry, wet;
    };

    static Gains gainsOf(float m, PanningLaw law) noexcept CINDER_REALTIME;
    void handOn(wave::Producer* input, int numSamples) noexcept CINDER_REALTIME;

    wave::Producer* dry;  // not owned
    wave::Producer* wet;  // not owned
};

}  // namespace cinder
