#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

#include "params/FloatPluginParameter.h"
#include "params/IndexedPluginParameter.h"
#include "params/tree/StandaloneParameters.h"
#include "state/BinaryData.h"
#include "state/MemoryStream.h"
#include "state/chunks/InstanceState.h"
#include "state/chunks/ParameterState.h"
#include "state/chunks/StateContent.h"
#include "support/Hex.h"
#include "support/ParameterValues.h"

namespace cinder::test {
namespace {

constexpr const char* code = "KCnd";

/// A product of three parameters that counts what it is told.
class SmallOwner final : private std::vector<AbstractPluginParameter*>, public GenericPluginBase {
public:
    SmallOwner() : GenericPluginBase(stereoLayout, 0, this) {}

    void beginUpdate() override { ++depth; }
    void endUpdate() override { --depth; }
    void requestHostRefresh() override { refreshes += depth == 1; }
    void parameterChanged(int, float, unsigned flags) override {
        changesOutside += depth != 1 || flags != AbstractPluginParameter::hostKnows;
    }

    int depth = 0;
    int refreshes = 0;       // in a bracket
    int changesOutside = 0;  // of it, or such as the host would hear of
    FloatPluginParameter gain{this, "Gain", {-36.0f, 36.0f, 1.0f}};
    IndexedPluginParameter<int> style{this, "Style", {1, 4, 2}};
    FloatPluginParameter mix{this, "Mix", {0.5f, 1.0f, 0.75f}};
};

using Values = std::vector<float>;

Values defaultsOf(const GenericParameterOwner& owner) {
    Values values;
    for (int id = 0; id < owner.parameterCount(); ++id)
        values.push_back(owner.parameter(id)->defaultValue());
    return values;
}

std::string stateOf(const GenericParameterOwner& owner, const InstanceState& instance,
                    std::optional<bool> isBypassed) {
    std::ostringstream stream;
    CHECK(writeParameterState(stream, owner));
    CHECK(writeInstanceState(stream, code, instance));
    if (isBypassed) CHECK(writeBypassState(stream, *isBypassed));
    return stream.str();
}

struct StateRead {
    ParameterStateResult parameters;
    std::optional<InstanceState> instance;
    std::optional<bool> isBypassed;
};

/// As a plug-in and its binding do: a section is looked at where the one before it was good.
StateRead readState(const std::string& bytes, GenericParameterOwner& owner) {
    MemoryStream stream(bytes);
    StateRead read;
    read.parameters = readParameterState(stream, owner);
    if (read.parameters.good) read.instance = readInstanceState(stream, code);
    if (read.instance) read.isBypassed = readBypassState(stream);

    MemoryStream again(bytes);
    const auto count = static_cast<std::size_t>(owner.parameterCount());
    const auto content = readStateContent(again, code, count);
    CHECK(content.has_value() == read.instance.has_value());
    if (content) {
        CHECK(content->instance == *read.instance);
        CHECK(content->isBypassed == read.isBypassed);
        CHECK(content->values.size() <= count);
    }
    return read;
}

constexpr const char* smallState = R"(
    4b 4e 42 53              [KNBS]      01 00 00 00  [version]   03 00 00 00  [count]
    00 00 d0 c0              [-6.5]      00 00 40 40  [3]         00 00 80 3f  [1]
    4b 43 6e 64              [KCnd]      01 00 00 00  [version]
    04 00 00 00 47 6c 6f 77  [Glow]      07 00 00 00  [number]    00 00 00 00  [own name]
    03 00 00 00 42 c3 bc     [B, u with dots]
    4b 4e 45 78              [KNEx]      01 00 00 00  [version]   01 00 00 00  [bypassed])";
const InstanceState smallInstance{"Glow", 7, false, "B\xc3\xbc"};
const Values smallValues{-6.5f, 3.0f, 1.0f};
constexpr std::size_t smallValuesAt = 12, smallInstanceAt = 24, smallBypassAt = 55;

TEST_CASE("State: bytes are fixed, and come back as one change that the host knows of") {
    SmallOwner writer, reader;
    for (int id = 0; id < 3; ++id)
        writer.parameter(id)->storeValue(smallValues[static_cast<std::size_t>(id)]);
    const std::string bytes = stateOf(writer, smallInstance, true);
    REQUIRE(bytes == fromHex(smallState));
    const StateRead read = readState(bytes, reader);
    CHECK(read.parameters.good);
    CHECK(valuesOf(reader) == smallValues);
    CHECK(reader.refreshes == 1);
    CHECK(reader.changesOutside == 0);
    CHECK(reader.depth == 0);
    CHECK(read.instance == smallInstance);
    CHECK(read.isBypassed == true);
}

TEST_CASE("State: a wrong byte harms what it stands in, or has all refused") {
    const std::string bytes = fromHex(smallState);
    for (std::size_t at = 0; at < bytes.size(); ++at)
        for (int mask = 1; mask < 256; ++mask) {
            INFO("byte " << at << ", mask " << mask);
            std::string flipped = bytes;
            flipped[at] = static_cast<char>(flipped[at] ^ mask);
            SmallOwner owner;
            const StateRead read = readState(flipped, owner);
            const Values values = valuesOf(owner);
            CHECK(owner.depth == 0);
            const bool inMagic = at < 4, inCount = at >= 8 && at < smallValuesAt;
            const bool isNegative = at == 11 && mask >= 128;
            CHECK(read.parameters.applied == (!inMagic && !isNegative));
            if (!read.parameters.applied) CHECK(values == defaultsOf(owner));
            for (std::size_t id = 0; id < values.size(); ++id) {
                AbstractPluginParameter& parameter = *owner.parameter(static_cast<int>(id));
                CHECK(values[id] >= parameter.minimum());
                CHECK(values[id] <= parameter.maximum());
                const bool isOwn = at / 4 == (smallValuesAt / 4) + id && at < smallInstanceAt;
                if (read.parameters.applied && !inCount && !isOwn)
                    CHECK(values[id] == smallValues[id]);
            }
            if (inCount) CHECK(!read.instance);  // it is looked for in a wrong place
            if (at >= 4 && at < smallInstanceAt && !inCount) CHECK(read.instance == smallInstance);
            if (at >= smallInstanceAt && at < smallInstanceAt + 4) CHECK(!read.instance);
            if (at >= smallBypassAt) {
                CHECK(read.instance == smallInstance);
                CHECK(read.isBypassed.has_value() == (at >= smallBypassAt + 4));
            }
        }
}

TEST_CASE("State: the whole tree comes back, and a cut stream gives what it had") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    StandaloneParameters before, tree;
    randomise(before, rng);
    const Values stored = valuesOf(before);
    const std::string bytes = stateOf(before, {"Name", -1, true, ""}, {});
    constexpr std::size_t endOfValues = 12 + 899 * 4;
    REQUIRE(bytes.size() == endOfValues + 28);
    for (std::size_t length = 0; length <= bytes.size(); length += length < 40 ? 1 : 7) {
        INFO("length " << length);
        randomise(tree, rng);
        const Values old = valuesOf(tree);
        const StateRead read = readState(bytes.substr(0, length), tree);
        const Values values = valuesOf(tree);
        CHECK(read.parameters.applied == (length >= 12));
        CHECK(read.parameters.good == (length >= endOfValues));
        CHECK(read.instance.has_value() == (length == bytes.size()));
        CHECK(!read.isBypassed);
        if (length < 12) {
            CHECK(values == old);
            continue;
        }
        const std::size_t had = std::min<std::size_t>((length - 12) / 4, stored.size());
        CHECK(std::equal(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(had),
                         stored.begin()));
        for (std::size_t id = had; id < values.size(); ++id) {
            AbstractPluginParameter& parameter = *tree.parameter(static_cast<int>(id));
            CHECK(values[id] == std::clamp(0.0f, parameter.minimum(), parameter.maximum()));
        }
    }
    CHECK(readState(bytes, tree).parameters.good);
    CHECK(valuesOf(tree) == stored);
}

TEST_CASE("State: a new instance's state never moves, since saved ones are read by place") {
    const std::string bytes = stateOf(StandaloneParameters(), {}, false);
    std::uint64_t hash = 0xcbf29ce484222325u;  // FNV-1a
    for (const char byte : bytes)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3u;
    CHECK(hash == 0xddd9b24c92c96fbu);
}

TEST_CASE("State: lists of any length, and values out of range") {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    struct Case {
        std::int32_t count;
        Values given, taken;
        bool applied, good;
    };
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    const Case cases[] = {
        {0, {}, {1.0f, 2.0f, 0.75f}, true, true},
        {2, {5.0f, 4.0f}, {5.0f, 4.0f, 0.75f}, true, true},
        {4, {5.0f, 4.0f, 1.0f, 9.0f}, {5.0f, 4.0f, 1.0f}, true, true},
        {most, {5.0f, 4.0f, 1.0f, 9.0f}, {5.0f, 4.0f, 1.0f}, true, false},
        {-1, {5.0f, 4.0f, 1.0f}, {9.0f, 1.0f, 0.5f}, false, false},
        {3, {nan, nan, nan}, {9.0f, 1.0f, 0.5f}, true, true},
        {3, {-infinity, infinity, 1e30f}, {-36.0f, 4.0f, 1.0f}, true, true},
    };
    for (const Case& c : cases) {
        INFO("count " << c.count);
        SmallOwner owner;
        owner.gain.storeValue(9.0f);
        owner.style.storeValue(1.0f);
        owner.mix.storeValue(0.5f);
        std::ostringstream stream;
        BinaryDataWriter(stream).writeHeader("KNBS", 99);  // of a later version, for all we know
        writeValue(stream, c.count);
        writeValues(stream, c.given.data(), c.given.size());
        writeInstanceState(stream, code, {});
        const StateRead read = readState(stream.str(), owner);
        CHECK(read.parameters.applied == c.applied);
        CHECK(read.parameters.good == c.good);
        CHECK(read.instance.has_value() == c.good);
        CHECK(valuesOf(owner) == c.taken);
    }
}

}  // namespace
}  // namespace cinder::test
