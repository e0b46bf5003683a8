#pragma once

#include <vector>

#include "core/Property.h"
#include "params/IndexedPluginParameter.h"

namespace cinder {

/// Hands its value to properties, whose owners hear of every real change.
template <typename T>
class PropPluginParameter : public IndexedPluginParameter<T> {
public:
    using IndexedPluginParameter<T>::IndexedPluginParameter;

    /// Lists a property, not owned. It is not set before the next `applyValue`.
    void addProperty(Property<T>* property) { properties.push_back(property); }

    void applyValue(float value) noexcept CINDER_REALTIME override {
        for (Property<T>* property : properties)
            property->assign(this->typed(value));
    }

private:
    std::vector<Property<T>*> properties;
};

}  // namespace cinder
