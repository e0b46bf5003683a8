#include "presets/format/PresetContent.h"

#include <ostream>
#include <utility>

#include "state/BinaryData.h"
#include "state/ValueList.h"

namespace cinder {

std::optional<PresetContent> readPresetContent(BinaryDataReader& reader, std::string_view magic,
                                               std::size_t maxValues) {
    if (reader.readHeader() != magic || !reader.isGood()) return {};
    auto list = readValueList(reader.getStream(), maxValues);
    if (!list) return {};
    return PresetContent{reader.getVersion(), std::move(list->values), list->whole};
}

bool writePresetContent(BinaryDataWriter& writer, std::string_view magic,
                        const PresetContent& content) {
    writer.writeHeader(magic, content.version);
    writeValue(writer.getStream(), static_cast<std::int32_t>(content.values.size()));
    writeValues(writer.getStream(), content.values.data(), content.values.size());
    return writer.isGood();
}

}  // namespace cinder
