#include "params/AbstractPluginParameter.h"

#include <utility>

namespace cinder {

AbstractPluginParameter::AbstractPluginParameter(GenericParameterOwner* owner, std::string name)
    : name(std::move(name)), id(owner->addParameter(this)), owner(owner) {}

void AbstractPluginParameter::setValue(float newValue, unsigned flags) noexcept CINDER_REALTIME {
    if (storeValue(newValue)) owner->parameterChanged(id, value(), flags);
}

}  // namespace cinder
