#include "fuzz/ParameterValues.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "params/AbstractPluginParameter.h"
#include "params/GenericParameterOwner.h"

namespace cinder::test {

void setAllToDefault(GenericParameterOwner& owner) {
    for (int id = 0; id < owner.parameterCount(); ++id)
        owner.parameter(id)->resetToDefault(AbstractPluginParameter::hostKnows);
}

void setAllToMaximum(GenericParameterOwner& owner) {
    for (int id = 0; id < owner.parameterCount(); ++id) {
        AbstractPluginParameter& parameter = *owner.parameter(id);
        parameter.setValue(parameter.maximum(), AbstractPluginParameter::hostKnows);
    }
}

bool agree(const std::vector<float>& one, const std::vector<float>& other) {
    return std::ranges::equal(one, other,
                              [](float a, float b) { return std::abs(a - b) <= 2.0f * sameValue; });
}

}  // namespace cinder::test
