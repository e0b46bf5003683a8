#include "params/AbstractPluginParameter.h"

#include <cmath>
#include <utility>

#include "core/Constants.h"
#include "params/GenericParameterResponder.h"
#include "params/ShortenName.h"

namespace cinder {

AbstractPluginParameter::AbstractPluginParameter(GenericParameterOwner* owner, std::string name,
                                                 bool discrete)
    : displayName(name),
      name(std::move(name)),
      id(owner->addParameter(this)),
      owner(owner),
      discrete(discrete) {}

void AbstractPluginParameter::setValue(float newValue, unsigned flags) noexcept CINDER_REALTIME {
    if (storeValue(newValue)) owner->parameterChanged(id, value(), flags);
}

void AbstractPluginParameter::applyValue(float) noexcept CINDER_REALTIME {}

void AbstractPluginParameter::respond(float value) noexcept CINDER_REALTIME {
    for (ParameterResponder* responder : responders)
        responder->valueChanged(value, this);
}

float AbstractPluginParameter::normalizeInContext(float value, int) const noexcept CINDER_REALTIME {
    return normalize(value);
}

bool AbstractPluginParameter::denormalizeInContext(float normalised, int,
                                                   float& out) const noexcept CINDER_REALTIME {
    out = denormalize(normalised);
    return true;
}

int AbstractPluginParameter::contextLimit(int) const noexcept CINDER_REALTIME {
    return -1;
}

bool AbstractPluginParameter::parseText(std::string_view, float& out) const {
    out = value();
    return false;
}

std::string AbstractPluginParameter::shortText(float value, int maxChars) const {
    return std::string(cutText(text(value), maxChars));
}

float AbstractPluginParameter::rescale(float value, float from,
                                       float to) const noexcept CINDER_REALTIME {
    const float reference = displayFromValue(from);
    if (!(std::abs(reference) > sameValue)) return (to - from) + value;
    return valueFromDisplay(displayFromValue(value) * (displayFromValue(to) / reference));
}

}  // namespace cinder
