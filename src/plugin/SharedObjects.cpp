#include "plugin/SharedObjects.h"

#include <utility>

#include "midi/ControllerMapFile.h"
#include "presets/files/Paths.h"

namespace cinder {
namespace {

constexpr const char* familyKeyPath = "Software\\Kestrelon";

SettingsKey keyOf(const VersionInfo& version, std::filesystem::path root) {
    return {std::move(root), registryKeyPath(version.productName, version.major)};
}

/// The first place that has it.
std::string machineHelpFile(const VersionInfo& version) {
    for (std::filesystem::path& root : machineSettingsRoots()) {
        SettingsFileReader reader(keyOf(version, std::move(root)));
        if (std::string name = reader.stringValue("HelpFileName", "", ""); !name.empty())
            return name;
    }
    return {};
}

}  // namespace

SharedObjects::SharedObjects(VersionInfo versionInfo, const std::string& presetExtension,
                             bool stateIsOneChunk)
    : settings(keyOf(versionInfo, userSettingsRoot()), stateIsOneChunk),
      version(std::move(versionInfo)),
      presets("", presetExtension),
      helpFileName(machineHelpFile(version)) {
    running.text = version.text();
}

void SharedObjects::addComponentPresetManager(const std::string& extension,
                                              const std::string& name) {
    const std::string folder = dataFolder();
    std::string path = folder.empty() ? "" : folder + "Component Presets\\" + name + "\\";
    createFolders(path);
    componentManagers.push_back(std::make_unique<PresetManager>(std::move(path), extension));
}

PresetManager* SharedObjects::presetManager(int kind) {
    if (kind == -1) return &presets;
    if (kind < 0 || kind >= componentKindCount()) return nullptr;
    return componentManagers[static_cast<std::size_t>(kind)].get();
}

void SharedObjects::rescanComponents() {
    for (const auto& manager : componentManagers)
        manager->rescan(manager->getPath());
}

std::string SharedObjects::defaultPresetFolder() const {
    return cinder::defaultPresetFolder(version.versionedName());
}

void SharedObjects::usePresetFolder(const std::string& path) {
    // As the tree spells its paths, or each look at the settings would find another folder.
    std::string folder = withTrailingBackslash(systemPath(nativePath(path)));
    if (!folderExists(folder)) folder = defaultPresetFolder();
    if (folder != presets.getPath()) presets.rescan(std::move(folder));
}

std::string SharedObjects::dataFolder() const {
    return applicationDataFolder(version.versionedName());
}

std::string SharedObjects::controllerMapPath() const {
    const std::string folder = dataFolder();
    return folder.empty() ? "" : folder + std::string(controllerMapFileName);
}

SettingsKey SharedObjects::productKey() const {
    return keyOf(version, userSettingsRoot());
}

SettingsKey SharedObjects::familyKey() const {
    return {userSettingsRoot(), familyKeyPath};
}

void SharedObjects::readSettings(Settings& own) {
    allSettings(own).read(productKey(), familyKey());
}

void SharedObjects::writeSettings(Settings& own) {
    allSettings(own).write(productKey());
}

}  // namespace cinder
