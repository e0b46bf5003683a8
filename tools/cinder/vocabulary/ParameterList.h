#pragma once

#include "cinder/vocabulary/Listing.h"

#include <string>

namespace cinder {

class AbstractPluginParameter;
class StandaloneParameters;

/// A row a parameter, in the order of the ids.
Listing parameterListing(const StandaloneParameters& tree);

/// The parameter of that name, in upper or lower case, or of that id.
/// Errors  UsageError, which names those that are spelt alike
AbstractPluginParameter& findParameter(const StandaloneParameters& tree, const std::string& name);

/// The value that a text stands for, within the range of what is stored.
/// Errors  UsageError
float valueOf(const AbstractPluginParameter& parameter, const std::string& text);

}  // namespace cinder
