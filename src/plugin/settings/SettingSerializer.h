#pragma once

#include <cstdint>
#include <string>

#include "plugin/settings/SettingValue.h"

namespace cinder {

/// Passes named values to or from a store. One routine serves both ways: every line of it says
///     value = serializer.xValue(name, value, fallback)
/// and a reader answers with what is stored, or else with the fallback, while a writer stores the
/// value and answers with it. So no key can be written under one name and read under another.
/// Errors  none. What is missing, of another type or no number answers with the fallback
class SettingSerializer {
public:
    virtual ~SettingSerializer() = default;

    virtual bool isWriter() const = 0;
    /// Stores the bytes, or replaces them with those stored; empty where there are none.
    virtual void binaryValue(const std::string& name, SettingBytes& value) = 0;
    /// An int, 0 or 1; true for all that isn't 0.
    virtual bool boolValue(const std::string& name, bool value, bool fallback);
    /// Text with 15 digits, the same in every language of the host.
    virtual double doubleValue(const std::string& name, double value, double fallback);
    /// Text, read to its end or not at all.
    virtual std::int32_t intValue(const std::string& name, std::int32_t value,
                                  std::int32_t fallback);
    virtual std::string stringValue(const std::string& name, const std::string& value,
                                    const std::string& fallback) = 0;

    /// From here on the values belong to the object that has seen these.
    virtual void follow(SeenSettings&) {}
};

}  // namespace cinder
