#include "presets/CollectionPresetLoader.h"

#include <cstddef>

#include "params/AbstractPluginParameter.h"

namespace cinder {

CollectionPresetLoader::CollectionPresetLoader(ParameterCollection& collection,
                                               std::string_view productCode)
    : PresetLoader(collection.owner, collection.filledMagic(productCode)), collection(collection) {}

void CollectionPresetLoader::resetEntry(int index) {
    collection.parameters[static_cast<std::size_t>(index)]->resetToDefault(0);
}

void CollectionPresetLoader::setEntry(int index, float value) {
    collection.parameters[static_cast<std::size_t>(index)]->setValue(value, 0);
}

}  // namespace cinder
