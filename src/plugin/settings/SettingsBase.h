#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <type_traits>

#include "core/Property.h"
#include "core/UpdatedObject.h"
#include "plugin/settings/SettingSerializer.h"
#include "plugin/settings/SettingsFile.h"

namespace cinder {

/// Something that can put itself into its store.
class SavedObject {
public:
    virtual void save() = 0;

protected:
    ~SavedObject() = default;
};

/// Settings that write themselves through: once `live` is set, every change of a property is in
/// the store when the assignment returns, and a run of changes in an UpdateBracket is one write.
/// State   belongs to the thread of the interface, or to whoever holds the instance lock
/// Errors  none: a change that can't be stored lives on in memory, also through later reads
class SettingsBase : public UpdatedObject, public SavedObject, public PropertyOwner {
public:
    SettingsBase(const SettingsBase&) = delete;
    SettingsBase& operator=(const SettingsBase&) = delete;

    void update() override;
    /// Reads or writes all values, in one order.
    virtual void serialize(SettingSerializer& serializer) = 0;
    void save() override;
    void propertyChanged(AbstractProperty*) override { requestUpdate(); }

    Property<bool> live{false};  // no owner: to set it saves nothing

protected:
    explicit SettingsBase(SettingsKey key) : key(std::move(key)) {}

    /// The first line of every `serialize`.
    void beginValues(SettingSerializer& serializer) { serializer.follow(seen); }
    static void serializeValue(SettingSerializer& serializer, const std::string& name,
                               Property<bool>& value, bool fallback);
    static void serializeValue(SettingSerializer& serializer, const std::string& name,
                               LimitedProperty<int>& value, int fallback);
    /// An enumeration, clamped to first..last.
    template <typename T>
    requires std::is_enum_v<T>
    static void serializeValue(SettingSerializer& serializer, const std::string& name,
                               Property<T>& value, T fallback, T first, T last) {
        const auto number = [](T choice) { return static_cast<std::int32_t>(choice); };
        LimitedProperty<int> limited(number(value.get()), number(first), number(last));
        serializeValue(serializer, name, limited, number(fallback));
        value = static_cast<T>(limited.get());
    }

private:
    SettingsKey key;
    SeenSettings seen;
};

}  // namespace cinder
