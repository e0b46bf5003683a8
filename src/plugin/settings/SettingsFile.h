#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "plugin/settings/SettingSerializer.h"
#include "plugin/settings/SettingsText.h"

namespace cinder {

/// A place in the store: a path of names with backslashes between them, under a root.
///
/// Each place is a folder, and its values are the file settings.conf in it, so that a place can
/// hold values and further places. "Software\Kestrelon\Cinder\1.0" is kestrelon/cinder/1.0 under
/// the root: the leading "Software" says nothing here, and paths are the same in any case.
struct SettingsKey {
    std::filesystem::path root;
    std::string keyPath;

    /// Empty where the root is no absolute path or the key path is empty.
    std::filesystem::path file() const;
};

/// $XDG_CONFIG_HOME, or .config in the home folder; empty where there is neither. [any]
std::filesystem::path userSettingsRoot();
/// Where an installer leaves values for all users, the most important place first:
/// $XDG_CONFIG_DIRS, or /etc/xdg. [any]
std::vector<std::filesystem::path> machineSettingsRoots();

/// Reads a settings file once, when it is made: all answers are of one moment.
/// [any] but the audio thread; takes no lock, since a writer puts whole files in place
class SettingsFileReader final : public SettingSerializer {
public:
    explicit SettingsFileReader(const SettingsKey& key);

    bool isWriter() const override { return false; }
    void binaryValue(const std::string& name, SettingBytes& value) override;
    std::int32_t intValue(const std::string& name, std::int32_t value,
                          std::int32_t fallback) override;
    std::string stringValue(const std::string& name, const std::string& value,
                            const std::string& fallback) override;
    void follow(SeenSettings& object) override { seen = &object; }

private:
    template <typename T>
    T read(const std::string& name, const T& value, const T& fallback);

    SettingsText text;
    SeenSettings* seen = nullptr;
};

/// Collects values and stores them all in one step. Of an object that is followed it stores what
/// the object has changed and what the file lacks; the rest of the file stays as it is, so that
/// processes which set different values at the same time lose none of them.
/// State   a lock on the file settings.lock is held from the reading of the file to the end of
///         its replacement. Waits for whoever holds it
/// Errors  `commit` is false, and the file as it was: no folder can be made, the disk is full or
///         write-protected, the old file can't be read. The objects keep the news for next time
/// [any] but the audio thread
class SettingsFileWriter final : public SettingSerializer {
public:
    explicit SettingsFileWriter(SettingsKey key) : key(std::move(key)) {}
    SettingsFileWriter(const SettingsFileWriter&) = delete;
    SettingsFileWriter& operator=(const SettingsFileWriter&) = delete;
    ~SettingsFileWriter() override { commit(); }

    bool isWriter() const override { return true; }
    void binaryValue(const std::string& name, SettingBytes& value) override;
    std::int32_t intValue(const std::string& name, std::int32_t value,
                          std::int32_t fallback) override;
    std::string stringValue(const std::string& name, const std::string& value,
                            const std::string& fallback) override;
    void follow(SeenSettings& object) override { seen = &object; }

    bool commit();

private:
    struct Entry {
        std::string name, encoded;
        SeenSettings* seen;
        bool isNews;
    };
    void put(const std::string& name, std::string encoded);
    bool store() const;

    SettingsKey key;
    SeenSettings* seen = nullptr;
    std::vector<Entry> entries;
};

}  // namespace cinder
