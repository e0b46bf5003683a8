#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "fuzz/FuzzTarget.h"
#include "plugin/settings/SettingValue.h"
#include "plugin/settings/SettingsText.h"
#include "plugin/settings/SharedSettings.h"
#include "support/TemporaryFolder.h"

namespace cinder::test {

namespace {

/// Some names: of the lines, as far as they have one, and one that may not be there.
std::vector<std::string> namesIn(std::string_view bytes) {
    std::vector<std::string> names = {"RetinaEnabled"};
    while (!bytes.empty() && names.size() < 16) {
        const std::string_view line = bytes.substr(0, bytes.find('\n'));
        bytes.remove_prefix(std::min(line.size() + 1, bytes.size()));
        names.push_back(unescapeSetting(line.substr(0, line.find('='))));
    }
    return names;
}

std::optional<std::string> found(const SettingsText& text, const std::string& name) {
    const auto value = text.find(name);
    return value ? std::optional(std::string(*value)) : std::nullopt;
}

/// What is set comes back from the file, and no other value is touched.
template <typename T>
void checkSet(const SettingsText& before, const std::vector<std::string>& names,
              const std::string& name, const T& value) {
    SettingsText changed = before;
    changed.set(name, encodeSetting(value));
    const SettingsText after(changed.content());
    const auto stored = after.find(name);
    REQUIRE(stored);
    CHECK((decodeSetting<T>(*stored) == value));
    CHECK(holdsTypeOf(encodeSetting(value), *stored));
    for (const std::string& other : names)
        if (foldCase(other) != foldCase(name)) CHECK(found(after, other) == found(before, other));
}

template <typename T>
void checkDecoded(std::string_view stored) {
    if (const auto value = decodeSetting<T>(stored))
        CHECK((decodeSetting<T>(encodeSetting(*value)) == value));
}

}  // namespace

void fuzzSettings(std::string_view bytes) {
    const SettingsText text(bytes);
    const std::string content = text.content();
    CHECK(content.starts_with(bytes));  // with a line feed behind it at most
    CHECK(SettingsText(content).content() == content);
    const std::vector<std::string> names = namesIn(bytes);
    for (const std::string& name : names)
        if (const auto stored = text.find(name)) {
            checkDecoded<std::int32_t>(*stored);
            checkDecoded<std::string>(*stored);
            checkDecoded<SettingBytes>(*stored);
        }
    checkSet(text, names, names.back(), std::string(bytes.substr(0, 64)));
    checkSet(text, names, names.front(), static_cast<std::int32_t>(bytes.size()));
    checkSet(text, names, names[names.size() / 2], SettingBytes(bytes.begin(), bytes.end()));

    static const TemporaryFolder folder;
    static const SettingsKey key{folder.path, "Kestrelon"};
    if (!std::filesystem::exists(key.file()))
        std::filesystem::create_directories(key.file().parent_path());
    putBytes(key.file(), std::string(bytes));
    SettingsFileReader reader(key);
    static SharedSettings shared(key);
    shared.serialize(reader);
    const auto retina = text.find("RetinaEnabled");
    const auto stored = retina ? decodeSetting<std::int32_t>(*retina) : std::nullopt;
    CHECK(shared.retinaEnabled == std::clamp(stored.value_or(1), 0, 300));
}

}  // namespace cinder::test
