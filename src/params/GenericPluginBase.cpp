#include "params/GenericPluginBase.h"

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

}  // namespace cinder
