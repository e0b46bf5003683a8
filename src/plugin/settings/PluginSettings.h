#pragma once

#include <string>

#include "plugin/settings/Settings.h"
#include "plugin/settings/SharedSettings.h"

namespace cinder {

/// The main preset folder, as far as the settings are concerned with it.
class PresetFolderChoice {
public:
    virtual std::string currentPresetFolder() const = 0;
    virtual std::string defaultPresetFolder() const = 0;
    /// Goes to the folder, or to the default one where there is no such folder.
    virtual void usePresetFolder(const std::string& path) = 0;

protected:
    ~PresetFolderChoice() = default;
};

/// Which version runs, and whether it is the user's first run of it. One a process.
struct RunningVersion {
    std::string text;  ///< such as "1.20"
    bool isFirstRun = false;
    SeenSettings seen;  ///< for what is stored beside the objects: preset folder and version
};

/// All settings as one instance sees them, in the one order in which they are read and written.
/// It owns nothing: make one where it is needed.
class PluginSettings {
public:
    PluginSettings(SharedSettings& shared, Settings& own, PresetFolderChoice& presetFolder,
                   RunningVersion& version)
        : shared(shared), own(own), presetFolder(presetFolder), version(version) {}

    void serializeAll(SettingSerializer& serializer);
    /// The product's key, and then over it that of the whole family of products.
    void read(const SettingsKey& product, const SettingsKey& family);
    bool write(const SettingsKey& product);

private:
    SharedSettings& shared;
    Settings& own;
    PresetFolderChoice& presetFolder;
    RunningVersion& version;
};

}  // namespace cinder
