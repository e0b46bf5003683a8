#include "presets/format/PresetMap.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <limits>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "state/BinaryData.h"
#include "state/MemoryStream.h"
#include "support/Hex.h"

namespace cinder::test {
namespace {

std::string bytesOfMap(const PresetMap& map) {
    std::ostringstream stream;
    BinaryDataWriter writer(stream);
    REQUIRE(writePresetMap(writer, map));
    return stream.str();
}

std::optional<PresetMap> mapFrom(std::string_view bytes) {
    MemoryStream stream(bytes);
    BinaryDataReader reader(stream);
    return readPresetMap(reader);
}

/// Where an old position has gone, in closed form: every 16th of a band's is dropped, and one more
/// step is made where a global parameter was added.
std::int32_t idOf(int position, int added639, int added640) {
    if (position < 93) {
        const int place = position - 6;  // among the bands
        if (place < 0) return position;
        return place % 16 == 6 ? -1 : 6 + place - (place + 9) / 16;
    }
    int id = position - 6;
    for (const int added : {added639, added640})
        if (added >= 0 && id >= added) ++id;
    return id;
}

TEST_CASE("PresetMap: the product's three maps, 3,636 bytes each, position by position") {
    struct Case {
        std::int32_t version;
        int oldCount, added639, added640;
        int firstNewBehind;  // from here to the end
    };
    for (const Case& row :
         {Case{1, 767, 639, 640, 763}, {2, 768, -1, 640, 763}, {3, 898, -1, 640, 893}}) {
        INFO("version " << row.version);
        const PresetMap map = *presetMapOf(row.version);
        CHECK(map.newCount == 899);
        REQUIRE(map.map.size() == static_cast<std::size_t>(row.oldCount));
        std::set<std::int32_t> ids;
        for (int i = 0; i < row.oldCount; ++i) {
            INFO("position " << i);
            const std::int32_t id = map.map[static_cast<std::size_t>(i)];
            REQUIRE(id == idOf(i, row.added639, row.added640));
            if (id >= 0) ids.insert(id);
        }
        std::vector<std::int32_t> added;
        for (const int id : {row.added639, row.added640})
            if (id >= 0) added.push_back(id);
        for (int id = row.firstNewBehind; id < 899; ++id)
            added.push_back(id);
        CHECK(map.added == added);
        ids.insert(added.begin(), added.end());
        CHECK(ids.size() == 899);

        const std::string bytes = bytesOfMap(map);
        CHECK(bytes.size() == 3636);
        CHECK(mapFrom(bytes) == map);
        for (std::size_t length = 0; length < bytes.size(); ++length)
            REQUIRE(!mapFrom(std::string_view(bytes).substr(0, length)));
    }
    for (const std::int32_t version : {-1, 0, 4, 5})
        CHECK(!presetMapOf(version));
    CHECK(presetMapName("KCnd", 2) == "PresetMap_KCnd_2");
}

TEST_CASE("PresetMap: bytes are fixed, and numbers that mean nothing are refused") {
    const PresetMap small{3, {0, -1, 2}, {1}};
    const std::string bytes = fromHex(R"(50 4d 61 70 [PMap]  01 00 00 00 [version]
        03 00 00 00 [new]  03 00 00 00 [old]  00 00 00 00  ff ff ff ff  02 00 00 00  01 00 00 00)");
    REQUIRE(bytesOfMap(small) == bytes);
    CHECK(mapFrom(bytes + "more") == small);
    const auto changed = [&](std::size_t at, std::int32_t number) {
        std::string other = bytes;
        std::ostringstream word;
        writeValue(word, number);
        other.replace(at, 4, word.str());
        return mapFrom(other);
    };
    constexpr std::int32_t huge = std::numeric_limits<std::int32_t>::max();
    CHECK(changed(4, 7) == small);  // a version that is not looked at
    for (const std::size_t count : {8, 12})
        for (const std::int32_t number : {0, -1, huge, -huge - 1})
            CHECK(!changed(count, number));
    CHECK(!changed(8, 2));                   // an id that no parameter has
    CHECK(!changed(8, 4));                   // more added than there are
    CHECK(changed(16, -1) == std::nullopt);  // the same
    for (const std::size_t id : {16, 28})
        for (const std::int32_t number : {3, -2, huge})
            CHECK(!changed(id, number));
    CHECK(!changed(28, -1));
    // Fewer added than none.
    CHECK(!mapFrom(bytesOfMap({1, {0, 0, 0}, {}})));
    CHECK(!mapFrom("PMax" + bytes.substr(4)));
}

}  // namespace
}  // namespace cinder::test
