#include "params/PluginParameterSet.h"

#include <algorithm>

#include "params/AbstractPluginParameter.h"

namespace cinder {

AbstractPluginParameter* PluginParameterSet::parameter(int index) const {
    if (index < 0 || index >= parameterCount()) return nullptr;
    return parameters[static_cast<std::size_t>(index)];
}

int PluginParameterSet::addParameter(AbstractPluginParameter* parameter) {
    parameters.push_back(parameter);
    return owner->addParameter(parameter);
}

void PluginParameterSet::copyFrom(const PluginParameterSet& other) {
    const int count = std::min(parameterCount(), other.parameterCount());
    for (int i = 0; i < count; ++i)
        parameter(i)->setValue(other.parameter(i)->value(), 0);
}

void PluginParameterSet::resetToDefaults() {
    for (AbstractPluginParameter* parameter : parameters)
        parameter->resetToDefault(0);
}

}  // namespace cinder
