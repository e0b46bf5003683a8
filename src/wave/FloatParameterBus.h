#pragma once

#include "wave/FloatParameterSource.h"

namespace cinder::wave {

/// A stage's control input. It carries a knob of its own, until it is pointed at another signal; a
/// value that is assigned always goes to the knob.
class FloatParameterBus final : public ValueAssignable<float> {
public:
    explicit FloatParameterBus(Environment* environment, float initial = 0.0f)
        : ownSource(environment, initial), source(&ownSource) {}
    FloatParameterBus(Environment* environment, float initial, float minimum, float maximum)
        : ownSource(environment, initial, minimum, maximum), source(&ownSource) {}
    FloatParameterBus(const FloatParameterBus&) = delete;
    FloatParameterBus& operator=(const FloatParameterBus&) = delete;

    /// A null pointer goes back to the knob.
    void setSource(Producer* newSource) {
        ownSource.parameter.endRest();
        source = newSource ? newSource : &ownSource;
    }
    Producer* getSource() const { return source; }
    void assign(float value) override { ownSource.assign(value); }

    FloatParameter& getParameter() { return ownSource.parameter; }
    /// [audio]
    BasicBlock<float>* pull(int numSamples) noexcept CINDER_REALTIME {
        return source->pull(numSamples);
    }
    bool isConstant() const { return source->isConstant(); }
    /// Whether its signal is that of the knob.
    bool isOnItsOwn() const { return source == &ownSource; }

private:
    FloatParameterSource ownSource;
    Producer* source;
};

/// Offers a control input as a producer, so that several stages can share it.
class FloatParameterBusForwarder final : public Source {
public:
    FloatParameterBusForwarder(Environment* environment, FloatParameterBus* bus)
        : Source(environment, true), bus(bus) {}

    void render(BasicBlock<float>*, int numSamples, unsigned) noexcept CINDER_REALTIME override {
        Producer* const source = bus->getSource();
        passOn(source->pull(numSamples));
        status = source->getStatus();
    }

private:
    FloatParameterBus* bus;
};

}  // namespace cinder::wave
