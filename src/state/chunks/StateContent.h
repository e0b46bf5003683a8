#pragma once

#include <iosfwd>
#include <optional>
#include <string_view>
#include <vector>

#include "state/chunks/InstanceState.h"

namespace cinder {

/// A whole state without a plug-in to hold it, for whoever shows, compares or checks one.
struct StateContent {
    std::vector<float> values;  ///< in the order of the ids, as stored: not clamped, not padded
    InstanceState instance;
    std::optional<bool> isBypassed;  ///< none: the state has no section of the host's
};

/// Reads at most `maxValues` values and passes over the others.
/// Errors  none: a plug-in would refuse the state, or take a part of it only
std::optional<StateContent> readStateContent(std::istream& stream, std::string_view productCode,
                                             std::size_t maxValues);

}  // namespace cinder
