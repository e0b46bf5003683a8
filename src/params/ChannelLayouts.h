#pragma once

#include <array>
#include <cstdint>

namespace cinder {

/// Index of a layout in the tables below, the same number on both halves and in the host bindings.
inline constexpr std::int32_t monoLayout = 0;
inline constexpr std::int32_t stereoLayout = 1;

inline constexpr std::array<std::int32_t, 16> channelCounts = {1, 2, 3, 4, 4, 5, 6,  6,
                                                               7, 7, 7, 8, 8, 9, 10, 11};
inline constexpr std::int32_t maxChannelCount = 11;

/// Channels of a layout; 0 for a layout that does not exist.
constexpr std::int32_t channelCountOf(std::int32_t layout) {
    if (layout < 0 || layout >= static_cast<std::int32_t>(channelCounts.size())) return 0;
    return channelCounts[static_cast<std::size_t>(layout)];
}

struct SpeakerCode {
    std::int32_t layout;
    std::int32_t channel;
    std::uint32_t code;
};
inline constexpr SpeakerCode speakerCodes[] = {
    {monoLayout, 0, 0x100},    // middle
    {stereoLayout, 0, 0x21e},  // left
    {stereoLayout, 1, 0x41e},  // right
};

/// 0 for a channel of a layout that has no codes.
constexpr std::uint32_t speakerCodeOf(std::int32_t layout, std::int32_t channel) {
    for (const SpeakerCode& row : speakerCodes)
        if (row.layout == layout && row.channel == channel) return row.code;
    return 0;
}

}  // namespace cinder
