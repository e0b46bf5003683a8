#include "presets/format/PresetConversion.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include "params/AbstractPluginParameter.h"
#include "presets/format/ComponentKind.h"
#include "presets/format/ParameterText.h"
#include "presets/format/PresetMap.h"

namespace cinder {

namespace {

constexpr std::int32_t allValues = 899;
constexpr std::int32_t valuesWithoutBandStates = 893;

std::vector<std::int32_t> firstIds(std::int32_t count) {
    std::vector<std::int32_t> ids(static_cast<std::size_t>(count));
    std::iota(ids.begin(), ids.end(), 0);
    return ids;
}

/// The id of each position in a file of that version, or dropped.
std::vector<std::int32_t> idsOf(std::int32_t version) {
    if (version == presetVersion) return firstIds(allValues);
    const auto map = presetMapOf(version);
    return map ? map->map : std::vector<std::int32_t>();
}

/// Values that the file lacks, because it is short or because of its layout, stay at default.
std::vector<float> spread(const PresetContent& content, const std::vector<std::int32_t>& ids,
                          const GenericParameterOwner& parameters) {
    std::vector<float> values = defaultValues(parameters);
    for (std::size_t i = 0; i < std::min(ids.size(), content.values.size()); ++i)
        if (ids[i] != PresetMap::dropped)
            values[static_cast<std::size_t>(ids[i])] =
                settledValue(*parameters.parameter(ids[i]), content.values[i]);
    return values;
}

/// Takes what `ids` name out of `values`, and leaves the defaults there.
std::vector<float> take(std::vector<float>& values, const std::vector<std::int32_t>& ids,
                        const GenericParameterOwner& parameters) {
    std::vector<float> taken;
    for (const std::int32_t id : ids) {
        if (id == PresetMap::dropped) {
            taken.push_back(0.0f);
            continue;
        }
        float& value = values[static_cast<std::size_t>(id)];
        taken.push_back(value);
        value = parameters.parameter(id)->defaultValue();
    }
    return taken;
}

/// The first parameter that is not at its default, or null.
const AbstractPluginParameter* firstSet(const std::vector<float>& values,
                                        const GenericParameterOwner& parameters) {
    for (std::size_t id = 0; id < values.size(); ++id) {
        const AbstractPluginParameter* const parameter = parameters.parameter(static_cast<int>(id));
        if (values[id] != parameter->defaultValue()) return parameter;
    }
    return nullptr;
}

}  // namespace

std::optional<PresetLayout> presetLayout(std::int32_t version) {
    const auto count = static_cast<std::int32_t>(idsOf(version).size());
    return count > 0 ? std::optional(PresetLayout{version, count}) : std::nullopt;
}

std::optional<PresetLayout> factoryLayout(std::int32_t version) {
    if (version == presetVersion) return PresetLayout{version, valuesWithoutBandStates};
    return presetLayout(version);
}

std::optional<std::vector<float>> presentValues(const PresetContent& content,
                                                const GenericParameterOwner& parameters) {
    const std::vector<std::int32_t> ids = idsOf(content.version);
    if (ids.empty()) return {};
    return spread(content, ids, parameters);
}

std::optional<PresetContent> contentOf(const std::vector<float>& values, PresetLayout layout,
                                       const GenericParameterOwner& parameters,
                                       std::string& fault) {
    std::vector<std::int32_t> ids = idsOf(layout.version);
    ids.resize(std::min(ids.size(), static_cast<std::size_t>(layout.count)));
    std::vector<float> rest = values;
    PresetContent content{layout.version, take(rest, ids, parameters)};
    if (const AbstractPluginParameter* const lost = firstSet(rest, parameters)) {
        fault = "a preset of version " + std::to_string(layout.version) + " with " +
                std::to_string(layout.count) + " values does not hold " + lost->getName();
        return {};
    }
    return content;
}

std::optional<PresetContent> componentContentOf(const std::vector<float>& values,
                                                const ComponentKind& kind,
                                                const GenericParameterOwner& parameters,
                                                std::string& fault) {
    std::vector<float> rest = values;
    PresetContent content{componentVersion, take(rest, kind.ids(0), parameters)};
    if (const AbstractPluginParameter* const lost = firstSet(rest, parameters)) {
        fault = "a " + std::string(kind.extension) + " file holds parameters of " +
                std::string(kind.setName) + " and does not hold " + lost->getName();
        return {};
    }
    return content;
}

std::vector<float> componentValues(const PresetContent& content, const ComponentKind& kind,
                                   const GenericParameterOwner& parameters) {
    return spread(content, kind.ids(0), parameters);
}

std::vector<float> defaultValues(const GenericParameterOwner& parameters) {
    std::vector<float> values;
    for (int id = 0; id < parameters.parameterCount(); ++id)
        values.push_back(parameters.parameter(id)->defaultValue());
    return values;
}

}  // namespace cinder
