#pragma once

#include <cstdint>
#include <string_view>

#include "presets/ParameterCollection.h"

namespace cinder {

class GenericParameterOwner;

// Preset files on the disk: presets, component presets and defaults of the interface, which differ
// in what they cover. Paths are those inside the system. All [ui].

/// Reads a preset of any version up to the present one, see CustomPresetLoader.
/// Errors  as `load`; a file that can't be opened is one with another magic
bool loadPresetFile(GenericParameterOwner& owner, std::string_view path,
                    std::string_view productCode, std::int32_t presentVersion);

/// Reads a file of that version alone into a collection.
/// Errors  as above
bool loadCollection(ParameterCollection& collection, std::string_view path,
                    std::string_view productCode, std::int32_t version);

/// All of a collection, for `firstId`.
inline constexpr int allIds = -1;

/// Writes a collection. In a file that is there and has the magic and the version, a `firstId`
/// other than `allIds` replaces the values of parameters `firstId` to below `firstId + count`
/// alone; what such a file is too short for is written with its default, as it would be loaded.
/// What a longer file has behind the new content stays.
/// Errors  false, and the file is as it was: another magic or version, or the disk refuses
bool saveCollection(ParameterCollection& collection, std::string_view path,
                    std::string_view productCode, std::int32_t version, int firstId = allIds,
                    int count = 0);

}  // namespace cinder
