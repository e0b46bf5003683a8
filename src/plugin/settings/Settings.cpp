#include "plugin/settings/Settings.h"

#include <algorithm>

namespace cinder {
namespace {

constexpr int greatestWidth = 16000;
constexpr int greatestHeight = 12000;

int firstLayout(const InterfaceShape& shape) {
    return shape.isResizable ? -1 : 0;
}

}  // namespace

Settings::Settings(SettingsKey key, const InterfaceShape& shape)
    : SettingsBase(std::move(key)),
      interfaceLayout(-1, firstLayout(shape), std::max(shape.sizeCount - 1, firstLayout(shape)),
                      this),
      interfacePanels(0, 0, 1 << shape.panelCount, this),
      interfaceWidth(0, shape.leastWidth, greatestWidth, this),
      interfaceHeight(0, shape.leastHeight, greatestHeight, this),
      shape(shape) {}

void Settings::serialize(SettingSerializer& serializer) {
    beginValues(serializer);
    if (shape.sizeCount >= 2 || shape.isResizable)
        serializeValue(serializer, "InterfaceLayout", interfaceLayout, -1);
    if (shape.panelCount > 0) serializeValue(serializer, "InterfacePanels", interfacePanels, 0);
    if (!shape.isResizable) return;
    serializeValue(serializer, "InterfaceWidth", interfaceWidth, 0);
    serializeValue(serializer, "InterfaceHeight", interfaceHeight, 0);
}

void CinderSettings::serialize(SettingSerializer& serializer) {
    Settings::serialize(serializer);
    serializeValue(serializer, "InterfaceLayout", layout, InterfaceLayout::Normal,
                   InterfaceLayout::Normal, InterfaceLayout::Wide);
    serializeValue(serializer, "ShowModulation", showModulation, false);
}

}  // namespace cinder
