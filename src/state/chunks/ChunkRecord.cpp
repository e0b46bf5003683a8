#include "state/chunks/ChunkRecord.h"

#include <algorithm>
#include <sstream>

#include "state/BinaryData.h"
#include "state/MemoryStream.h"

namespace cinder {

namespace {

constexpr std::size_t recordNameLength = 32;

struct NamedChunk {
    ChunkId id;
    std::string_view name;
};
constexpr std::array namedChunks{
    NamedChunk{ChunkId::PluginState, "Kestrelon Plugin State"},
    NamedChunk{ChunkId::PresetName, "Kestrelon Preset Name"},
    NamedChunk{ChunkId::Controls, "Complete Controls State"},
};

std::string_view upToZero(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

}  // namespace

std::string_view chunkName(ChunkId id) {
    const auto found = std::ranges::find(namedChunks, id, &NamedChunk::id);
    return found == namedChunks.end() ? std::string_view() : found->name;
}

std::string encodeChunk(const ChunkRecord& record) {
    std::ostringstream stream;
    writeValue(stream, static_cast<std::int32_t>(record.data.size()));
    writeValue(stream, record.version);
    for (const std::uint32_t id :
         {record.manufacturerId, record.productId, record.pluginId, record.chunkId})
        writeValue(stream, id);
    std::string name = record.name.substr(0, recordNameLength - 1);
    name.resize(recordNameLength);
    stream << name << record.data;
    return std::move(stream).str();
}

std::optional<ChunkRecord> decodeChunk(std::string_view bytes) {
    MemoryStream stream(bytes);
    ChunkRecord record;
    std::int32_t size = 0;
    readValue(stream, size);
    readValue(stream, record.version);
    for (std::uint32_t* id :
         {&record.manufacturerId, &record.productId, &record.pluginId, &record.chunkId})
        readValue(stream, *id);
    std::array<char, recordNameLength> name{};
    stream.read(name.data(), name.size());
    if (!isGood(stream) || size < 0) return {};
    const std::string_view rest = bytes.substr(static_cast<std::size_t>(stream.tellg()));
    if (rest.size() < static_cast<std::size_t>(size)) return {};
    record.name = upToZero({name.data(), name.size()});
    record.data = rest.substr(0, static_cast<std::size_t>(size));
    return record;
}

std::string PresetNameChunk::write(std::string_view presetName) {
    std::string data(presetName.substr(0, nameLength));
    data.resize(size);
    return data;
}

std::optional<std::string> PresetNameChunk::read(std::string_view data) {
    if (data.size() < nameLength) return {};
    return std::string(upToZero(data.substr(0, comparedLength)));
}

bool PresetNameChunk::holds(std::string_view data, std::string_view presetName) {
    if (data.size() < nameLength) return false;
    return upToZero(data.substr(0, nameLength)) == upToZero(presetName.substr(0, nameLength));
}

}  // namespace cinder
