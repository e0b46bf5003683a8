// Preset files and the identity of the one that is loaded.
#include <algorithm>

#include "params/AbstractPluginParameter.h"
#include "plugin/GenericPlugin.h"
#include "presets/PresetFiles.h"

namespace cinder {
namespace {

constexpr const char* interfaceDefaultsFile = "InterfaceDefaults.knd";

std::string_view head(const std::string& text, int length) {
    return std::string_view(text).substr(
        0, length < 0 ? std::string_view::npos : static_cast<std::size_t>(length));
}

}  // namespace

bool GenericPlugin::loadPreset(const PresetEntry& entry) {
    std::vector<float> kept;
    for (const AbstractPluginParameter* parameter : interfaceDefaults.parameters)
        kept.push_back(parameter->value());
    beginUpdate();
    const bool loaded = loadPresetFile(*this, entry.path, productCode(), formatVersion());
    restoreInterfaceDefaults(kept);
    requestHostRefresh();
    endUpdate();
    if (!loaded) return false;
    currentPreset.assign({entry.name, entry.path, false});
    presetIsNew();
    return true;
}

/// The user's choices, be they made in this session or stored from an earlier one.
void GenericPlugin::restoreInterfaceDefaults(const std::vector<float>& values) {
    if (interfaceDefaults.parameters.empty()) return;
    if (loadingDefaultPreset) {
        loadCollection(interfaceDefaults, interfaceDefaultsPath(), productCode(), formatVersion());
        return;
    }
    for (std::size_t i = 0; i < values.size(); ++i)
        interfaceDefaults.parameters[i]->setValue(values[i], 0);
}

void GenericPlugin::saveInterfaceDefault(int parameterId) {
    const auto path = interfaceDefaultsPath();
    if (!saveCollection(interfaceDefaults, path, productCode(), formatVersion(), parameterId, 1))
        saveCollection(interfaceDefaults, path, productCode(), formatVersion());
}

std::string GenericPlugin::interfaceDefaultsPath() const {
    const std::string folder = shared->dataFolder();
    return folder.empty() ? "" : folder + interfaceDefaultsFile;
}

void GenericPlugin::loadDefaultPreset() {
    PresetEntry found;
    {
        const ScopedLock inside(instanceLock());
        const PresetEntry* const entry = shared->presets.findAtRootFirst(defaultPresetName());
        if (!entry) return;
        found = *entry;
    }
    loadingDefaultPreset = true;
    loadPreset(found);
    loadingDefaultPreset = false;
}

void GenericPlugin::loadProgram(int bank, int program) {
    PresetEntry found;
    {
        const ScopedLock inside(instanceLock());
        const PresetEntry* const entry = shared->presets.findProgram(bank, program);
        if (!entry) return;
        found = *entry;
    }
    loadPreset(found);
}

bool GenericPlugin::savePresetFile(const PresetEntry& entry, int firstId, int count) {
    if (!saveCollection(parameterCollection, entry.path, productCode(), formatVersion(), firstId,
                        count))
        return false;
    // First, since the entry may be one of the tree that the scan makes anew.
    currentPreset.setFile(entry.name, entry.path);
    if (firstId == allIds) currentPreset.setModified(false);
    rescanPresets();
    presetIsNew();
    return true;
}

bool GenericPlugin::loadComponentPreset(int kind, int index, const std::string& path) {
    ParameterCollection* const collection = componentCollection(kind, index);
    return collection &&
           loadCollection(*collection, path, productCode(), componentPresetVersion(kind));
}

bool GenericPlugin::saveComponentPreset(int kind, int index, const std::string& path) {
    ParameterCollection* const collection = componentCollection(kind, index);
    if (!collection ||
        !saveCollection(*collection, path, productCode(), componentPresetVersion(kind)))
        return false;
    const ScopedLock inside(instanceLock());
    if (PresetManager* const manager = presetManager(kind)) manager->rescan(manager->getPath());
    return true;
}

/// Under the lock, since a host's thread may look a name up meanwhile.
void GenericPlugin::rescanPresets(std::string path) {
    const ScopedLock inside(instanceLock());
    shared->presets.rescan(path.empty() ? shared->presets.getPath() : std::move(path));
}

void GenericPlugin::setPresetName(const std::string& name, int compareLength) {
    if (head(name, compareLength) == head(currentPreset.name(), compareLength)) return;
    std::string path;
    {
        const ScopedLock inside(instanceLock());
        if (const PresetEntry* const entry = shared->presets.findByName(name)) path = entry->path;
    }
    currentPreset.setFile(name, std::move(path));
    presetIsNew();
}

void GenericPlugin::presetIsNew() {
    if (adapter) adapter->presetChanged(0);
    notify(presetNotification, 0);
}

}  // namespace cinder
