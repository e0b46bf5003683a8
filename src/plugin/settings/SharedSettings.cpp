#include "plugin/settings/SharedSettings.h"

namespace cinder {

float forcedScaleOf(std::int32_t retinaEnabled) {
    if (retinaEnabled >= 100) return static_cast<float>(retinaEnabled) * 0.01f;
    return retinaEnabled == 1 ? 0.0f : 1.0f;
}

void SharedSettings::serialize(SettingSerializer& serializer) {
    using Mode = GraphicsAccelerationMode;
    beginValues(serializer);
    if (!stateIsOneChunk)
        serializeValue(serializer, "CorrectDigiProductIds", correctDigiProductIds, true);
    serializeValue(serializer, "EnableMIDIProgramChanges", enableMidiProgramChanges, false);
    const auto number = static_cast<std::int32_t>(graphicsAcceleration.get());
    graphicsAcceleration =
        static_cast<Mode>(serializer.intValue("GraphicsAcceleration", number, 1));
    serializeValue(serializer, "RetinaEnabled", retinaEnabled, 1);
    serializeValue(serializer, "SavePresetItemEnabled", savePresetItemEnabled, false);
    serializeValue(serializer, "showInteractiveHelp", showInteractiveHelp, true);
    serializeValue(serializer, "showWelcomeHint", showWelcomeHint, false);
    serializeValue(serializer, "ShowComponentDisplays", showComponentDisplays, true);
}

void SharedSettings::propertyChanged(AbstractProperty* property) {
    programChanges.store(enableMidiProgramChanges, std::memory_order_relaxed);
    SettingsBase::propertyChanged(property);
}

void SharedSettings::readFamilyValues(SettingSerializer& familyReader) {
    familyMode.reset();
    familyScale.reset();
    if (const auto value = familyReader.intValue("GraphicsAcceleration", -1, -1); value != -1)
        familyMode = static_cast<GraphicsAccelerationMode>(value);
    if (const auto value = familyReader.intValue("RetinaEnabled", -1, -1); value != -1)
        familyScale = forcedScaleOf(value);
    applyDisplayValues();
}

void SharedSettings::applyDisplayValues() {
    mode = familyMode.value_or(graphicsAcceleration.get());
    scale = familyScale.value_or(forcedScaleOf(retinaEnabled));
}

}  // namespace cinder
