#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cinder {

class GenericParameterOwner;

/// What a preset says of itself; each field is a line, and all may be missing.
struct PresetHead {
    std::string intent;                  ///< in a sentence
    std::string tags;                    ///< with commas between
    std::optional<std::int32_t> format;  ///< the version that it is written in; none: the present
    std::string loudness;                ///< "free": it may be louder or softer than the dry sound
    std::string audio;                   ///< which example audio it is checked on

    bool operator==(const PresetHead&) const = default;
};

/// One parameter that a text sets.
struct PresetSetting {
    std::int32_t id = 0;
    float value = 0.0f;
    int line = 0;  ///< from 1
};

/// What is wrong, and where.
struct TextFault {
    int line = 0;  ///< from 1; 0: nowhere in particular
    std::string what;
};

/// A preset as people read and write it:
///
///     Intent: Glues a drum bus and leaves its attacks alone.
///     Tags: drums, bus
///
///     # fields first, then what differs from the default
///     Band 1 Style = Warm Tube
///     Band 1 Drive = 45%
///
/// Shape   fields are Intent, Tags, Format, Loudness and Audio; names and values as in
///         `parameterNamed` and `valueOfText`. Of two values for a parameter the last one counts.
///         Empty lines and those that begin with # say nothing
struct PresetText {
    PresetHead head;
    std::vector<PresetSetting> settings;

    /// Of all parameters, in the order of their ids; what is not set is at its default.
    std::vector<float> values(const GenericParameterOwner& parameters) const;
};

/// Errors  none, and what is wrong with the first line that is
std::optional<PresetText> readPresetText(std::string_view text,
                                         const GenericParameterOwner& parameters, TextFault& fault);

/// One "NAME=VALUE", with blanks anywhere around its parts.
/// Errors  none, and what is wrong
std::optional<PresetSetting> readSetting(std::string_view text,
                                         const GenericParameterOwner& parameters,
                                         std::string& fault);

/// A text that reads back as that head and those values, to the bit: what differs from the default,
/// with an empty line between groups.
/// Range   as `exactText`; the head without line breaks
std::string writePresetText(const PresetHead& head, const std::vector<float>& values,
                            const GenericParameterOwner& parameters);

}  // namespace cinder
