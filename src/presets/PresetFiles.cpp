#include "presets/PresetFiles.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "params/AbstractPluginParameter.h"
#include "params/GenericParameterOwner.h"
#include "presets/CollectionPresetLoader.h"
#include "presets/CustomPresetLoader.h"
#include "presets/files/Paths.h"
#include "presets/format/PresetContent.h"
#include "state/BinaryFile.h"

namespace cinder {

namespace {

/// The first values of a file of that magic and version, `wanted` at most; none for another file.
std::optional<std::vector<float>> valuesThere(std::string_view path, std::string_view magic,
                                              std::int32_t version, std::size_t wanted) {
    BinaryFileReader reader(nativePath(path));
    if (reader.readHeader() != magic || reader.getVersion() != version) return {};
    std::int32_t count = 0;
    readValue(reader.getStream(), count);
    std::vector<float> values;
    for (; count > 0 && values.size() < wanted; --count) {
        float value = 0.0f;
        readValue(reader.getStream(), value);
        if (!reader.isGood()) break;
        values.push_back(value);
    }
    return values;
}

}  // namespace

bool loadPresetFile(GenericParameterOwner& owner, std::string_view path,
                    std::string_view productCode, std::int32_t presentVersion) {
    BinaryFileReader reader(nativePath(path));
    CustomPresetLoader loader(&owner, productCode, presentVersion);
    return load(loader, reader, anyVersion);
}

bool loadCollection(ParameterCollection& collection, std::string_view path,
                    std::string_view productCode, std::int32_t version) {
    BinaryFileReader reader(nativePath(path));
    CollectionPresetLoader loader(collection, productCode);
    return load(loader, reader, version);
}

bool saveCollection(ParameterCollection& collection, std::string_view path,
                    std::string_view productCode, std::int32_t version, int firstId, int count) {
    const std::string& magic = collection.filledMagic(productCode);
    std::optional<std::vector<float>> kept;
    if (firstId != allIds && fileExists(path)) {
        kept = valuesThere(path, magic, version, collection.parameters.size());
        if (!kept) return false;
    }
    PresetContent content{version, {}};
    for (std::size_t i = 0; i < collection.parameters.size(); ++i) {
        const AbstractPluginParameter& parameter = *collection.parameters[i];
        const bool isInRange = parameter.getId() >= firstId && parameter.getId() - firstId < count;
        if (!kept || isInRange)
            content.values.push_back(parameter.value());
        else
            content.values.push_back(i < kept->size() ? (*kept)[i] : parameter.defaultValue());
    }
    BinaryFileWriter writer(nativePath(path));
    return writePresetContent(writer, magic, content) && writer.commit();
}

}  // namespace cinder
