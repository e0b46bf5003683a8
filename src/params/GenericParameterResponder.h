#pragma once

#include <vector>

#include "core/Realtime.h"
#include "params/GenericParameterOwner.h"

namespace cinder {

/// Hears of the values that take effect, on the thread on which they do. One that is listed with a
/// parameter hears its target values, one that is listed with an owner its stored values.
class ParameterResponder {
public:
    virtual void valueChanged(float value, AbstractPluginParameter* parameter) = 0;

protected:
    ~ParameterResponder() = default;
};

/// An owner that tells a list of responders, not owned, of every value that takes effect.
class GenericParameterResponder : public GenericParameterOwner {
public:
    /// Before audio runs.
    void addResponder(ParameterResponder* responder) override { responders.push_back(responder); }

protected:
    void respond(float value, AbstractPluginParameter* parameter) noexcept CINDER_REALTIME {
        for (ParameterResponder* responder : responders)
            responder->valueChanged(value, parameter);
    }

private:
    std::vector<ParameterResponder*> responders;
};

}  // namespace cinder
