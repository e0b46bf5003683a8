#include "params/FloatPluginParameter.h"

#include <cmath>
#include <utility>

#include "core/Constants.h"

namespace cinder {

namespace {

/// Written so that a NaN ends at the minimum.
float limited(float value, const FloatRange& range) {
    if (!(value >= range.minimum)) return range.minimum;
    return value > range.maximum ? range.maximum : value;
}

}  // namespace

FloatPluginParameter::FloatPluginParameter(GenericParameterOwner* owner, std::string name,
                                           FloatRange range)
    : AbstractPluginParameter(owner, std::move(name)), range(range), stored(range.defaultValue) {}

void FloatPluginParameter::setRange(FloatRange newRange) {
    range = newRange;
    stored.store(limited(range.defaultValue, range), std::memory_order_relaxed);
}

float FloatPluginParameter::normalize(float value) const noexcept CINDER_REALTIME {
    const float span = range.maximum - range.minimum;
    return span > 0.0f ? (value - range.minimum) / span : 0.0f;
}

float FloatPluginParameter::denormalize(float normalised) const noexcept CINDER_REALTIME {
    return (range.maximum - range.minimum) * normalised + range.minimum;
}

bool FloatPluginParameter::storeValue(float newValue) noexcept CINDER_REALTIME {
    newValue = limited(newValue, range);
    if (std::abs(newValue - value()) <= sameValue) return false;
    stored.store(newValue, std::memory_order_relaxed);
    return true;
}

}  // namespace cinder
