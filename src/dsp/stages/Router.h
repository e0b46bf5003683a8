#pragma once

#include <memory>
#include <vector>

#include "core/Property.h"
#include "wave/FloatParameter.h"
#include "wave/Rest.h"

namespace cinder {

/// Switches between inputs with a crossfade.
/// Shape   one channel; at rest the selected input's block is handed on and no other input is
///         pulled, so a router at rest costs nothing
/// Range   selection 0..inputs - 1; with any other value the output fades to silence
/// State   the gains; settled on selection 0 from the start
class Router final : public wave::Source, public PropertyOwner, private wave::Rest {
public:
    struct Input {
        Input(wave::Environment* environment, float gain) : gain(environment, gain, 0.0f, 1.0f) {}
        wave::FloatParameter gain;
        wave::Producer* input = nullptr;  // not owned
    };

    Router(wave::Environment* environment, int numInputs);

    Input& input(int index) { return *inputs[static_cast<std::size_t>(index)]; }
    void connect(int index, wave::Producer* producer) { input(index).input = producer; }

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;
    void propertyChanged(AbstractProperty* property) override;

    Property<int> selection{0, this};
    Property<float> crossfadeMs{20.0f, this};

private:
    void ended(std::uint64_t position) noexcept CINDER_REALTIME override;
    void tryToRest(int numSamples) noexcept CINDER_REALTIME;

    std::vector<std::unique_ptr<Input>> inputs;
    const Input* restingOn = nullptr;  // the only one that is heard, at gain 1
};

}  // namespace cinder
