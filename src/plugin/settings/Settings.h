#pragma once

#include <cstdint>

#include "plugin/settings/SettingsBase.h"

namespace cinder {

/// What of the window can change its size.
struct InterfaceShape {
    int sizeCount = 0;  ///< sizes to choose from, apart from dragging
    bool isResizable = false;
    int panelCount = 0;  ///< panels that can be shown or not
    int leastWidth = 0, leastHeight = 0;
};

/// What one instance has of its own: the window it was last given. Values for which the product
/// has no use are neither read nor written.
class Settings : public SettingsBase {
public:
    Settings(SettingsKey key, const InterfaceShape& shape);

    void serialize(SettingSerializer& serializer) override;

    LimitedProperty<int> interfaceLayout;  // -1: the size was dragged; else a row of the sizes
    LimitedProperty<int> interfacePanels;  // a bit for each panel that is shown
    LimitedProperty<int> interfaceWidth;
    LimitedProperty<int> interfaceHeight;

private:
    InterfaceShape shape;
};

enum class InterfaceLayout : std::int32_t { Normal = 0, Wide = 1 };

/// The window of the product has two widths, and a section that can be shown or not.
class CinderSettings final : public Settings {
public:
    explicit CinderSettings(SettingsKey key) : Settings(std::move(key), {}) {}

    void serialize(SettingSerializer& serializer) override;

    Property<InterfaceLayout> layout{InterfaceLayout::Normal, this};
    Property<bool> showModulation{false, this};
};

}  // namespace cinder
