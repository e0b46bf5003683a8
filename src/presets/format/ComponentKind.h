#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace cinder {

/// What a component preset covers: a band or a source, whichever of its kind. The kind's number is
/// its row in `componentKinds()`.
struct ComponentKind {
    std::string_view extension;  ///< ".band"
    std::string_view folder;     ///< in "Component Presets"
    std::string_view setName;    ///< of the first: "Band 1"
    std::int32_t numSets;
    std::int32_t numValues;
    std::int32_t firstId;  ///< of the first set's first value; all its values stand in a row
    std::int32_t idStep;   ///< from set to set

    /// The ids of the values of set `index`, counted from 0, in the order of the file.
    std::vector<std::int32_t> ids(std::int32_t index) const;
};

/// In the order of their numbers, 0 to 4.
std::span<const ComponentKind> componentKinds();
/// The kind of files with that extension, in upper or lower case; null for another.
const ComponentKind* componentKindOf(std::string_view extension);

/// The version in which components are written. There are no others.
inline constexpr std::int32_t componentVersion = 1;

}  // namespace cinder
