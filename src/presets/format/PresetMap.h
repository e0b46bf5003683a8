#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cinder {

class BinaryDataReader;
class BinaryDataWriter;

/// Where the values of an old version's presets have gone:
///
///     "PMap"    version 1    newCount    oldCount    oldCount x id or -1    the added ids
///
/// Numbers of 4 bytes; there are newCount - oldCount + (number of -1) added ids.
struct PresetMap {
    static constexpr std::int32_t dropped = -1;

    std::int32_t newCount = 0;        ///< parameters now
    std::vector<std::int32_t> map;    ///< for each old position the id that it has now, or dropped
    std::vector<std::int32_t> added;  ///< ids that the old version lacked

    bool operator==(const PresetMap&) const = default;
};

/// The version is not looked at.
/// Errors  none: another magic, a count below 1, fewer added ids than none, an id that is no
///         parameter's, or an early end
std::optional<PresetMap> readPresetMap(BinaryDataReader& reader);
/// Whether the stream is good.
bool writePresetMap(BinaryDataWriter& writer, const PresetMap& map);

/// The product's own maps, for versions 1 to 3. None for another version.
std::optional<PresetMap> presetMapOf(std::int32_t version);

/// Of the resource that holds a map: "PresetMap_KCnd_1".
std::string presetMapName(std::string_view productCode, std::int32_t version);

}  // namespace cinder
