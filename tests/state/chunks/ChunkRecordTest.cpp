#include "state/chunks/ChunkRecord.h"

#include <doctest/doctest.h>

#include "support/Hex.h"

namespace cinder::test {
namespace {

using namespace std::string_literals;

constexpr const char* recordBytes = R"(
    03 00 00 00  [size of the data]          02 00 00 00  [version]
    72 74 73 4b  [Kstr, little-endian]       64 6e 43 4b  [KCnd]
    64 6e 43 4b  [KCnd]                      73 50 4e 4b  [KNPs]
    4b 65 73 74 72 65 6c 6f 6e 20 50 6c 75 67 69 6e 20 53 74 61 74 65  [name, 32 bytes]
    00 00 00 00 00 00 00 00 00 00
    61 00 62     [data])";

TEST_CASE("ChunkRecord: bytes are fixed; none of them missing or wrong does harm") {
    ChunkRecord record{.version = 2,
                       .manufacturerId = fourCharacterCode("Kstr"),
                       .productId = fourCharacterCode("KCnd"),
                       .pluginId = fourCharacterCode("KCnd"),
                       .chunkId = static_cast<std::uint32_t>(ChunkId::PluginState),
                       .name = std::string(chunkName(ChunkId::PluginState)),
                       .data = "a\0b"s};
    const std::string bytes = encodeChunk(record);
    REQUIRE(bytes == fromHex(recordBytes));
    CHECK(decodeChunk(bytes + "more") == record);
    for (std::size_t length = 0; length < bytes.size(); ++length)
        CHECK(!decodeChunk(bytes.substr(0, length)));
    for (std::size_t at = 0; at < bytes.size(); ++at)
        for (int mask = 1; mask < 256; ++mask) {
            std::string flipped = bytes;
            flipped[at] = static_cast<char>(flipped[at] ^ mask);
            const auto read = decodeChunk(flipped);
            const bool isSmaller = at == 0 && static_cast<unsigned char>(flipped[0]) < 3;
            CHECK(read.has_value() == (at >= 4 || isSmaller));
            const bool isBehindName = at > 46 && at < 56;
            if (at >= 4) CHECK((*read == record) == isBehindName);
        }

    record.name = std::string(40, 'n');
    CHECK(decodeChunk(encodeChunk(record))->name == std::string(31, 'n'));
}

TEST_CASE("PresetNameChunk: 64 bytes of a name, of which 63 come back") {
    for (const std::size_t length : {0, 1, 62, 63, 64, 65, 200}) {
        INFO("length " << length);
        const std::string name(length, 'n');
        const std::string data = PresetNameChunk::write(name);
        CHECK(data.size() == 124);
        CHECK(data.substr(0, 64) ==
              name.substr(0, 64) + std::string(64 - std::min(length, 64UL), 0));
        CHECK(data.substr(64) == std::string(60, 0));
        CHECK(PresetNameChunk::read(data) == name.substr(0, 63));
        CHECK(PresetNameChunk::read(data.substr(0, 64)) == name.substr(0, 63));
        CHECK(PresetNameChunk::holds(data, name));
        CHECK(!PresetNameChunk::holds(data, "m" + name));
        CHECK(PresetNameChunk::holds(data, name + "n") == (length >= 64));
    }
    CHECK(!PresetNameChunk::read(std::string(63, 'n')));
    CHECK(!PresetNameChunk::holds(std::string(63, 0), ""));
    // What stands behind the end of a name is nobody's concern.
    CHECK(PresetNameChunk::holds("abc\0rubbish"s + std::string(60, 'x'), "abc"));
}

}  // namespace
}  // namespace cinder::test
