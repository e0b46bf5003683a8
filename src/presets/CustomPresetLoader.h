#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "presets/PresetLoader.h"

namespace cinder {

class AbstractPluginParameter;

/// The loader of presets, of the present version and of those for which the product has a map: the
/// map says which parameter each position of the file means by now, and which ones are new.
///
/// Values are carried over by position and never converted: a parameter keeps its meaning.
class CustomPresetLoader final : public PresetLoader {
public:
    /// With `anyVersion` in the place of the present version, every file is taken as of the
    /// present one.
    CustomPresetLoader(GenericParameterOwner* owner, std::string_view productCode,
                       std::int32_t currentVersion)
        : PresetLoader(owner, std::string(productCode)), currentVersion(currentVersion) {}

    int entryCount() const override { return static_cast<int>(entries.size()); }
    /// Gives the parameters that a file of that version doesn't know their defaults.
    void prepare(std::int32_t version) override;
    /// From version 1 to the present one, where there is a map that names each parameter once.
    bool acceptsVersion(std::int32_t version) override;
    void resetEntry(int index) override;
    void setEntry(int index, float value) override;

private:
    struct Entry {
        AbstractPluginParameter* parameter;  // null: it is no more
        float* target = nullptr;             // gets the value as well; no product has had one
        float value = 0.0f;                  // the last one seen
    };

    void setPresentEntries();
    bool setMappedEntries(std::int32_t version);

    const std::int32_t currentVersion;
    std::int32_t loadedVersion = -1;  // for which the entries are set up
    std::vector<Entry> entries;       // what each position in the file means
    std::vector<std::int32_t> newParameters;
};

}  // namespace cinder
