#include "params/GenericPluginBase.h"

#include <algorithm>

namespace cinder {

int GenericPluginBase::parameterCount() const {
    return static_cast<int>(parameterList->size());
}

AbstractPluginParameter* GenericPluginBase::parameter(int id) const {
    if (id < 0 || id >= parameterCount()) return nullptr;
    return (*parameterList)[static_cast<std::size_t>(id)];
}

int GenericPluginBase::addParameter(AbstractPluginParameter* parameter) {
    parameterList->push_back(parameter);
    return parameterCount() - 1;
}

int GenericPluginBase::addGroup(const std::string& name) {
    const auto found = std::find(groupNames.begin(), groupNames.end(), name);
    const auto id = static_cast<int>(found - groupNames.begin());
    if (found == groupNames.end()) groupNames.push_back(name);
    return id;
}

std::string GenericPluginBase::groupName(int id) const {
    return id >= 0 && id < groupCount() ? groupNames[static_cast<std::size_t>(id)] : std::string();
}

}  // namespace cinder
