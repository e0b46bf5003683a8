#include "presets/format/PresetMap.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <istream>
#include <ostream>
#include <span>

#include "state/BinaryData.h"

namespace cinder {

namespace {

constexpr std::string_view mapMagic = "PMap";
constexpr std::int32_t mapVersion = 1;
constexpr std::int32_t presentCount = 899;
constexpr std::int32_t dropped = PresetMap::dropped;

/// Positions first..last of an old file: their ids from newFirst on, or dropped.
struct MapRange {
    std::int32_t first, last, newFirst;
};
struct IdRange {
    std::int32_t first, last;
};

/// Bands of old had 16 parameters, and what stood at place 6 is gone.
// clang-format off
constexpr MapRange oldBands[] = {
    // old      new ids from
    {0, 11, 0},          // the globals, the number of bands, and band 1 up to its Drive Pan
    {12, 12, dropped},
    {13, 27, 12},        // the rest of a band, and the next one up to its Drive Pan
    {28, 28, dropped},
    {29, 43, 27},
    {44, 44, dropped},
    {45, 59, 42},
    {60, 60, dropped},
    {61, 75, 57},
    {76, 76, dropped},
    {77, 91, 72},
    {92, 92, dropped},
};
// clang-format on
// The rest of band 6, the sources, the globals and the slots.
constexpr MapRange restOf1[] = {{93, 644, 87}, {645, 766, 641}};  // 24 slots
constexpr MapRange restOf2[] = {{93, 645, 87}, {646, 767, 641}};  // 24 slots
constexpr MapRange restOf3[] = {{93, 645, 87}, {646, 897, 641}};  // all 50

constexpr IdRange addedTo1[] = {{639, 640}, {763, 898}};  // Auto Mute Feedback, High Quality, slots
constexpr IdRange addedTo2[] = {{640, 640}, {763, 898}};  // High Quality, slots, band states
constexpr IdRange addedTo3[] = {{640, 640}, {893, 898}};  // High Quality, band states

struct MapRows {
    std::int32_t version, oldCount;
    std::span<const MapRange> rest;
    std::span<const IdRange> added;
};
constexpr MapRows productMaps[] = {
    // version  old count  rest     added
    {1, 767, restOf1, addedTo1},
    {2, 768, restOf2, addedTo2},
    {3, 898, restOf3, addedTo3},
};

constexpr bool isWhole(const MapRows& rows) {
    std::int32_t next = 0;
    std::array<int, presentCount> found{};
    for (const std::span<const MapRange> ranges : {std::span<const MapRange>(oldBands), rows.rest})
        for (const MapRange& range : ranges) {
            if (range.first != next) return false;
            next = range.last + 1;
            for (std::int32_t i = range.first; i <= range.last && range.newFirst != dropped; ++i)
                ++found[static_cast<std::size_t>(range.newFirst + i - range.first)];
        }
    for (const IdRange& range : rows.added)
        for (std::int32_t id = range.first; id <= range.last; ++id)
            ++found[static_cast<std::size_t>(id)];
    return next == rows.oldCount && std::ranges::all_of(found, [](int n) { return n == 1; });
}
static_assert(std::ranges::all_of(productMaps, isWhole));  // each position once, each id once

/// Reads whole numbers from `minimum` to below `end`. False: another one, or an early end.
bool readIds(std::istream& stream, std::int64_t count, std::int32_t minimum, std::int32_t end,
             std::vector<std::int32_t>& ids) {
    for (std::int64_t i = 0; i < count; ++i) {
        std::int32_t id = 0;
        readValue(stream, id);
        if (!isGood(stream) || id < minimum || id >= end) return false;
        ids.push_back(id);
    }
    return true;
}

}  // namespace

std::optional<PresetMap> readPresetMap(BinaryDataReader& reader) {
    if (reader.readHeader() != mapMagic) return {};
    std::istream& stream = reader.getStream();
    PresetMap map;
    std::int32_t oldCount = 0;
    readValue(stream, map.newCount);
    readValue(stream, oldCount);
    if (!isGood(stream) || map.newCount < 1 || oldCount < 1) return {};
    if (!readIds(stream, oldCount, dropped, map.newCount, map.map)) return {};
    const std::int64_t numAdded =
        std::int64_t{map.newCount} - oldCount + std::count(map.map.begin(), map.map.end(), dropped);
    if (numAdded < 0 || !readIds(stream, numAdded, 0, map.newCount, map.added)) return {};
    return map;
}

bool writePresetMap(BinaryDataWriter& writer, const PresetMap& map) {
    writer.writeHeader(mapMagic, mapVersion);
    std::ostream& stream = writer.getStream();
    writeValue(stream, map.newCount);
    writeValue(stream, static_cast<std::int32_t>(map.map.size()));
    for (const std::vector<std::int32_t>* const ids : {&map.map, &map.added})
        for (const std::int32_t id : *ids)
            writeValue(stream, id);
    return writer.isGood();
}

std::optional<PresetMap> presetMapOf(std::int32_t version) {
    const auto rows = std::ranges::find(productMaps, version, &MapRows::version);
    if (rows == std::end(productMaps)) return {};
    PresetMap map{presentCount, {}, {}};
    for (const std::span<const MapRange> ranges : {std::span<const MapRange>(oldBands), rows->rest})
        for (const auto& [first, last, newFirst] : ranges)
            for (std::int32_t i = first; i <= last; ++i)
                map.map.push_back(newFirst == dropped ? dropped : newFirst + i - first);
    for (const auto& [first, last] : rows->added)
        for (std::int32_t id = first; id <= last; ++id)
            map.added.push_back(id);
    return map;
}

std::string presetMapName(std::string_view productCode, std::int32_t version) {
    return "PresetMap_" + std::string(productCode) + "_" + std::to_string(version);
}

}  // namespace cinder
