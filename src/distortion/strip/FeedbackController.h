#pragma once

#include "core/Property.h"
#include "wave/Producer.h"

namespace cinder {

/// The gain of a band's feedback loop: the amount that is asked for, times a gate that closes when
/// the plug-in's input falls silent. So no loop goes on by itself.
/// Shape   one channel; with no amount, or without auto-mute, the amount is handed on and the gate
///         is not pulled
/// State   none
class FeedbackController final : public wave::Filter {
public:
    /// The gate is not owned.
    FeedbackController(wave::Environment* environment, wave::Producer* gate)
        : Filter(environment), gate(gate) {}

    Property<bool> autoMute{true};

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    wave::Producer* const gate;
};

}  // namespace cinder
