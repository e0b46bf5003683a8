#pragma once

#include <vector>

#include "params/AbstractPluginParameter.h"
#include "params/GenericParameterOwner.h"
#include "support/Rng.h"

namespace cinder::test {

/// Of all parameters, in the order of their ids.
inline std::vector<float> valuesOf(const GenericParameterOwner& owner) {
    std::vector<float> values;
    for (int id = 0; id < owner.parameterCount(); ++id)
        values.push_back(owner.parameter(id)->value());
    return values;
}

/// Any value for every parameter, within one bracket.
inline void randomise(GenericParameterOwner& owner, Rng& rng) {
    owner.beginUpdate();
    for (int id = 0; id < owner.parameterCount(); ++id) {
        AbstractPluginParameter& parameter = *owner.parameter(id);
        parameter.setValue(parameter.denormalize(static_cast<float>(rng.real(0.0, 1.0))), 0);
    }
    owner.endUpdate();
}

}  // namespace cinder::test
