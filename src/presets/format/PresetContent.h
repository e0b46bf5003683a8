#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace cinder {

class BinaryDataReader;
class BinaryDataWriter;

/// What the product's preset files begin with: its code.
inline constexpr std::string_view presetMagic = "KCnd";

/// The version in which presets are written now.
inline constexpr std::int32_t presetVersion = 4;

/// A preset file, or a component's, without a plug-in to load it:
///
///     product's code    version    count    count x float
///
/// What the values mean follows from the version, see PresetMap, or from the kind of component.
struct PresetContent {
    std::int32_t version = presetVersion;
    std::vector<float> values;  ///< as stored: not clamped, not padded
    bool whole = true;          ///< false: the file ended before its values did; those are 0

    bool operator==(const PresetContent&) const = default;
};

/// Reads at most `maxValues` values and looks at no others.
/// Errors  none: another magic, a count that can't be read or is below 0
std::optional<PresetContent> readPresetContent(BinaryDataReader& reader, std::string_view magic,
                                               std::size_t maxValues);
/// Whether the stream is good.
bool writePresetContent(BinaryDataWriter& writer, std::string_view magic,
                        const PresetContent& content);

}  // namespace cinder
