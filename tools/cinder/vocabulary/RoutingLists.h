#pragma once

#include "cinder/vocabulary/Listing.h"

namespace cinder {

class StandaloneParameters;

/// The sources of the modulation: kind, and the targets among their own controls, which they cannot
/// modulate.
Listing sourceListing();
/// The targets: range record with limits and depths, and the parameter that is the base.
Listing targetListing(const StandaloneParameters& tree);

}  // namespace cinder
