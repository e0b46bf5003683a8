#include "presets/CustomPresetLoader.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

#include "params/AbstractPluginParameter.h"
#include "params/GenericParameterOwner.h"
#include "presets/format/PresetMap.h"
#include "presets/resources/Resources.h"
#include "state/BinaryFile.h"

namespace cinder {

namespace {

std::optional<PresetMap> embeddedMap(std::string_view productCode, std::int32_t version) {
    const std::string name = presetMapName(productCode, version);
    if (!resourceExists(name)) return {};
    BinaryResourceReader reader(resourceBytes(name));
    return readPresetMap(reader);
}

}  // namespace

bool CustomPresetLoader::acceptsVersion(std::int32_t version) {
    const bool isChecked = currentVersion != anyVersion;
    if (isChecked && (version < 1 || version > currentVersion)) return false;
    if (version == loadedVersion && !entries.empty()) return true;
    entries.clear();
    loadedVersion = -1;
    if (!isChecked || version == currentVersion)
        setPresentEntries();
    else if (!setMappedEntries(version))
        return false;
    loadedVersion = version;
    return true;
}

void CustomPresetLoader::setPresentEntries() {
    for (int id = 0; id < getOwner()->parameterCount(); ++id)
        entries.push_back({getOwner()->parameter(id)});
    newParameters.clear();
}

bool CustomPresetLoader::setMappedEntries(std::int32_t version) {
    auto map = embeddedMap(magic(), version);
    if (!map) return false;
    const auto numDropped = std::ranges::count(map->map, PresetMap::dropped);
    const auto numKnown = std::ssize(map->map) - numDropped + std::ssize(map->added);
    // The ids of a map are below its count.
    const int numParameters = getOwner()->parameterCount();
    if (numKnown != numParameters || map->newCount != numParameters) return false;
    newParameters = std::move(map->added);
    for (const std::int32_t id : map->map)
        entries.push_back({id == PresetMap::dropped ? nullptr : getOwner()->parameter(id)});
    return true;
}

void CustomPresetLoader::prepare(std::int32_t) {
    for (const std::int32_t id : newParameters)
        getOwner()->parameter(id)->resetToDefault(0);
}

void CustomPresetLoader::resetEntry(int index) {
    const Entry& entry = entries[static_cast<std::size_t>(index)];
    if (entry.parameter) entry.parameter->resetToDefault(0);
}

void CustomPresetLoader::setEntry(int index, float value) {
    Entry& entry = entries[static_cast<std::size_t>(index)];
    if (entry.parameter) entry.parameter->setValue(value, 0);
    if (entry.target) *entry.target = value;
    entry.value = value;
}

}  // namespace cinder
