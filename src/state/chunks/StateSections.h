#pragma once

#include <cstdint>
#include <string_view>

namespace cinder {

/// The sections of a state, in their order, all of version 1. The middle one, the instance's, has
/// the product's code as its magic.
constexpr std::string_view parameterStateMagic = "KNBS";
constexpr std::string_view bypassStateMagic = "KNEx";
constexpr std::int32_t stateVersion = 1;

}  // namespace cinder
