#pragma once

#include <string_view>

#include "presets/ParameterCollection.h"
#include "presets/PresetLoader.h"

namespace cinder {

/// Value i goes to parameter i of a collection, whatever the version.
/// State   the collection, not owned; its magic is the product's code if it was empty
class CollectionPresetLoader final : public PresetLoader {
public:
    CollectionPresetLoader(ParameterCollection& collection, std::string_view productCode);

    int entryCount() const override { return static_cast<int>(collection.parameters.size()); }
    void prepare(std::int32_t) override {}
    bool acceptsVersion(std::int32_t) override { return true; }
    void resetEntry(int index) override;
    void setEntry(int index, float value) override;

private:
    ParameterCollection& collection;
};

}  // namespace cinder
