#include "plugin/settings/PluginSettings.h"

namespace cinder {

void PluginSettings::serializeAll(SettingSerializer& serializer) {
    // What a read changes in objects that are live is one change, and no reason to write before
    // the read is complete.
    const UpdateBracket sharedBracket(shared);
    const UpdateBracket ownBracket(own);
    shared.serialize(serializer);
    own.serialize(serializer);
    shared.applyDisplayValues();

    serializer.follow(version.seen);
    presetFolder.usePresetFolder(serializer.stringValue(
        "PresetFolder", presetFolder.currentPresetFolder(), presetFolder.defaultPresetFolder()));
    version.isFirstRun = serializer.stringValue("CurrentVersion", version.text, "") != version.text;
    if (version.isFirstRun) shared.showWelcomeHint = true;
}

void PluginSettings::read(const SettingsKey& product, const SettingsKey& family) {
    SettingsFileReader reader(product);
    serializeAll(reader);
    SettingsFileReader familyReader(family);
    shared.readFamilyValues(familyReader);
}

bool PluginSettings::write(const SettingsKey& product) {
    SettingsFileWriter writer(product);
    serializeAll(writer);
    return writer.commit();
}

}  // namespace cinder
