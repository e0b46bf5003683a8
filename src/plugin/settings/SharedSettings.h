#pragma once

#include <atomic>
#include <cstdint>
#include <optional>

#include "core/Realtime.h"
#include "plugin/settings/SettingsBase.h"

namespace cinder {

/// How windows are drawn: the low four bits are one of these, any other value there is like
/// `Sixty`. Higher bits say more and are kept as they are.
enum class GraphicsAccelerationMode : std::int32_t { Off = 0, Sixty = 1, Thirty = 2, Twenty = 3 };

/// The scale of windows that a "RetinaEnabled" asks for; 0 leaves it to the screen.
///     n < 100: 0 for 1, else 1;  n >= 100: n / 100
float forcedScaleOf(std::int32_t retinaEnabled);

/// What all instances of the process share.
class SharedSettings final : public SettingsBase {
public:
    /// `stateIsOneChunk` belongs to products which don't tell their variants apart.
    explicit SharedSettings(SettingsKey key, bool stateIsOneChunk = false)
        : SettingsBase(std::move(key)), stateIsOneChunk(stateIsOneChunk) {}

    void serialize(SettingSerializer& serializer) override;
    void propertyChanged(AbstractProperty* property) override;

    /// [any]
    bool midiProgramChangesEnabled() const noexcept CINDER_REALTIME {
        return programChanges.load(std::memory_order_relaxed);
    }

    /// Takes what the key of the whole family of products says about the display. It goes before
    /// the values here as long as the process lives, and is never copied into them.
    void readFamilyValues(SettingSerializer& familyReader);
    /// Sets the two values that windows go by.
    void applyDisplayValues();
    GraphicsAccelerationMode rendererMode() const { return mode; }
    float forcedScale() const { return scale; }

    Property<bool> correctDigiProductIds{true, this};
    Property<bool> enableMidiProgramChanges{false, this};
    Property<GraphicsAccelerationMode> graphicsAcceleration{GraphicsAccelerationMode::Sixty, this};
    LimitedProperty<int> retinaEnabled{1, 0, 300, this};
    Property<bool> savePresetItemEnabled{false, this};
    Property<bool> showInteractiveHelp{true, this};
    Property<bool> showWelcomeHint{false, this};
    Property<bool> showComponentDisplays{true, this};

private:
    bool stateIsOneChunk;
    std::atomic<bool> programChanges{false};
    std::optional<GraphicsAccelerationMode> familyMode;
    std::optional<float> familyScale;
    GraphicsAccelerationMode mode = GraphicsAccelerationMode::Sixty;
    float scale = 0.0f;
};

}  // namespace cinder
