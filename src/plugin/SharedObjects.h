#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "midi/ControllerMapping.h"
#include "plugin/VersionInfo.h"
#include "plugin/settings/PluginSettings.h"
#include "presets/PresetManager.h"

namespace cinder {

/// What all instances of the process have in common. The first one builds it and the last one
/// frees it, both under the instance lock.
/// State   belongs to the thread of the interface, or to whoever holds the instance lock. Its parts
///         stay where they are as long as any instance lives
class SharedObjects final : public PresetFolderChoice {
public:
    SharedObjects(VersionInfo version, const std::string& presetExtension, bool stateIsOneChunk);

    /// A folder below "Component Presets\" in the product's application data. Kinds count up from 0
    /// in the order of these calls.
    void addComponentPresetManager(const std::string& extension, const std::string& name);
    /// Null for a kind without one; -1 is the main manager.
    PresetManager* presetManager(int kind);
    int componentKindCount() const { return static_cast<int>(componentManagers.size()); }
    void rescanComponents();

    // The main preset folder.
    std::string currentPresetFolder() const override { return presets.getPath(); }
    std::string defaultPresetFolder() const override;
    void usePresetFolder(const std::string& path) override;

    /// The product's own folder of application data.
    std::string dataFolder() const;
    std::string controllerMapPath() const;
    SettingsKey productKey() const;
    SettingsKey familyKey() const;
    void readSettings(Settings& own);
    void writeSettings(Settings& own);

private:
    std::vector<std::unique_ptr<PresetManager>> componentManagers;

public:
    SharedSettings settings;
    const VersionInfo version;
    RunningVersion running;
    PresetManager presets;
    ControllerMapping controllerMapping;
    std::string helpFileName;  ///< as the installer has left it; empty: there is none
    std::int32_t nextInstanceNumber = 0;

private:
    PluginSettings allSettings(Settings& own) { return {settings, own, *this, running}; }
};

}  // namespace cinder
