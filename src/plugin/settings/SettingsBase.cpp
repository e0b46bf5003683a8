#include "plugin/settings/SettingsBase.h"

namespace cinder {

void SettingsBase::update() {
    UpdatedObject::update();
    if (live) save();
}

void SettingsBase::save() {
    SettingsFileWriter writer(key);
    serialize(writer);
}

void SettingsBase::serializeValue(SettingSerializer& serializer, const std::string& name,
                                  Property<bool>& value, bool fallback) {
    value = serializer.boolValue(name, value, fallback);
}

void SettingsBase::serializeValue(SettingSerializer& serializer, const std::string& name,
                                  LimitedProperty<int>& value, int fallback) {
    value.assign(serializer.intValue(name, value, fallback));
}

}  // namespace cinder
