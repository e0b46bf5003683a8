#pragma once

#include "params/FloatPluginParameter.h"
#include "params/GenericPropPluginParameter.h"

namespace cinder {

/// A continuous parameter that hands its target value to properties, each within its own limits.
using LimFloatPropPluginParameter =
    GenericPropPluginParameter<LimitedProperty<float>, FloatPluginParameter>;

}  // namespace cinder
