#include "params/tree/StandaloneParameters.h"

#include <algorithm>

namespace cinder {

StandaloneParameters::StandaloneParameters()
    : GenericPluginBase(stereoLayout, CinderParameters::features, this),
      CinderParameters(this, this) {
    initialize();
}

void StandaloneParameters::parameterChanged(int id, float value, unsigned) {
    parameter(id)->applyValue(value);
}

AbstractPluginParameter* StandaloneParameters::named(std::string_view name) const {
    const auto found = std::find_if(begin(), end(), [=](const AbstractPluginParameter* parameter) {
        return parameter->getName() == name;
    });
    return found == end() ? nullptr : *found;
}

}  // namespace cinder
