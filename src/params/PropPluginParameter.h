#pragma once

#include "params/GenericPropPluginParameter.h"
#include "params/IndexedPluginParameter.h"

namespace cinder {

/// A stepped parameter that hands its value to properties.
template <typename T>
using PropPluginParameter = GenericPropPluginParameter<Property<T>, IndexedPluginParameter<T>>;

}  // namespace cinder
