#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace cinder {

/// What a state knows of an instance besides its parameters:
///
///     product's code    version 1    preset name    number, 4 bytes    auto name, 4 bytes    name
///
/// where the names are strings: a byte count and UTF-8.
struct InstanceState {
    std::string presetName;
    std::int32_t instanceNumber = -1;  ///< -1: never set
    bool autoInstanceName = true;      ///< the name follows the track or the product
    std::string instanceName;

    bool operator==(const InstanceState&) const = default;
};

/// Whether the stream is good. [ui, host]
bool writeInstanceState(std::ostream& stream, std::string_view productCode,
                        const InstanceState& state);

/// The version is not looked at.
/// Errors  none: another magic, or the section isn't whole. [ui, host]
std::optional<InstanceState> readInstanceState(std::istream& stream, std::string_view productCode);

/// What the host's binding adds: whether the host has the whole instance bypassed.
///
///     "KNEx"    version 1    0 or 1, 4 bytes
bool writeBypassState(std::ostream& stream, bool isBypassed);

/// Any number but 0 is a bypass.
/// Errors  none: nothing or something else stands there, as in a state of old. The bypass then
///         stays as it is, and the state is none the worse for it
std::optional<bool> readBypassState(std::istream& stream);

}  // namespace cinder
