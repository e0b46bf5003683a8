#include "wave/RestOfControls.h"

#include <algorithm>

namespace cinder::wave {

void RestOfControls::add(FloatParameterBus& control) {
    controls.push_back(&control);
    control.getParameter().setRest(this);
}

void RestOfControls::tryToBegin(int numSamples) noexcept CINDER_REALTIME {
    const bool allStand = std::ranges::all_of(controls, [](const FloatParameterBus* control) {
        return control->isOnItsOwn() && control->isConstant();
    });
    if (!allStand) return;
    const Environment& environment = *controls.front()->getParameter().getEnvironment();
    for (FloatParameterBus* control : controls)
        control->getParameter().fill();
    begin(environment.getPosition() + static_cast<std::uint64_t>(numSamples));
}

void RestOfControls::ended(std::uint64_t position) noexcept CINDER_REALTIME {
    for (FloatParameterBus* control : controls)
        control->getParameter().wasFollowedUpTo(position);
}

}  // namespace cinder::wave
