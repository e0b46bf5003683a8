#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "presets/format/PresetContent.h"

namespace cinder {

class GenericParameterOwner;
struct ComponentKind;

// From files of any version to the values of all parameters, in the order of their ids, and back.
// [any], with a tree that has been set up.

/// Which values a file holds.
struct PresetLayout {
    std::int32_t version = presetVersion;
    std::int32_t count = 0;
};

/// Of a preset as the plug-in writes it, 899 values, or as it wrote it in an older version.
/// Errors  none: no such version
std::optional<PresetLayout> presetLayout(std::int32_t version);
/// Of a preset that is delivered with the product: in the present version the band states are left
/// out, so that they are at their defaults after a load.
std::optional<PresetLayout> factoryLayout(std::int32_t version);

/// What the parameters of a new instance have when it has loaded the preset.
/// Errors  none: no such version
std::optional<std::vector<float>> presentValues(const PresetContent& content,
                                                const GenericParameterOwner& parameters);

/// A file of that layout; a position of an old one whose parameter is gone holds 0.
/// Errors  none: a parameter that such a file does not hold differs from its default; `fault` says
///         which
std::optional<PresetContent> contentOf(const std::vector<float>& values, PresetLayout layout,
                                       const GenericParameterOwner& parameters, std::string& fault);

/// A component file from the values of the first set of its kind.
/// Errors  none: anything else differs from its default; `fault` says what
std::optional<PresetContent> componentContentOf(const std::vector<float>& values,
                                                const ComponentKind& kind,
                                                const GenericParameterOwner& parameters,
                                                std::string& fault);

/// What the parameters of a new instance have when the first set of that kind has loaded the file.
std::vector<float> componentValues(const PresetContent& content, const ComponentKind& kind,
                                   const GenericParameterOwner& parameters);

/// All at default.
std::vector<float> defaultValues(const GenericParameterOwner& parameters);

}  // namespace cinder
