#include "presets/PresetLoader.h"

#include <cstddef>

#include "params/GenericParameterOwner.h"
#include "state/BinaryData.h"
#include "state/ValueList.h"

namespace cinder {

bool load(PresetLoader& loader, BinaryDataReader& reader, std::int32_t requiredVersion,
          std::string_view magicOverride) {
    const std::string_view expected = magicOverride.empty() ? loader.magic() : magicOverride;
    if (reader.readHeader() != expected || !reader.isGood()) return false;
    const std::int32_t version = reader.getVersion();
    const bool isAccepted =
        requiredVersion == anyVersion ? loader.acceptsVersion(version) : version == requiredVersion;
    if (!isAccepted) return false;
    const int numEntries = loader.entryCount();
    const auto list = readValueList(reader.getStream(), static_cast<std::size_t>(numEntries));
    if (!list) return false;

    loader.getOwner()->beginUpdate();
    loader.prepare(version);
    int index = 0;
    for (const float value : list->values)
        loader.setEntry(index++, value);
    for (; index < numEntries; ++index)
        loader.resetEntry(index);
    loader.finish(version);
    loader.getOwner()->endUpdate();
    return list->whole;
}

}  // namespace cinder
