#pragma once

#include <string>
#include <utility>

#include "params/AbstractPluginParameter.h"

namespace cinder {

/// A parameter that gives the processing side a T.
template <typename T>
class TypedPluginParameter : public AbstractPluginParameter {
public:
    TypedPluginParameter(GenericParameterOwner* owner, std::string name, bool discrete)
        : AbstractPluginParameter(owner, std::move(name), discrete) {}

    /// What the processing side gets for a value.
    virtual T targetValue(float value) const noexcept CINDER_REALTIME = 0;

    void applyValue(float value) noexcept CINDER_REALTIME override {
        this->respond(static_cast<float>(targetValue(value)));
    }
};

}  // namespace cinder
