#pragma once

#include <vector>

#include "core/Property.h"
#include "core/Realtime.h"

namespace cinder {

/// A parameter of class `Base` that hands its target value to properties, whose owners hear of
/// every real change.
template <typename P, typename Base>
class GenericPropPluginParameter : public Base {
public:
    using Base::Base;

    /// Lists a property, not owned. It is not set before the next `applyValue`.
    void addProperty(P* property) { properties.push_back(property); }

    void applyValue(float value) noexcept CINDER_REALTIME override {
        Base::applyValue(value);
        for (P* property : properties)
            property->assign(this->targetValue(value));
    }

private:
    std::vector<P*> properties;
};

}  // namespace cinder
