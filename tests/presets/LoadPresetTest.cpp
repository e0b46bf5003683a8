#include <doctest/doctest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "params/tree/StandaloneParameters.h"
#include "presets/CollectionPresetLoader.h"
#include "presets/CustomPresetLoader.h"
#include "presets/format/PresetConversion.h"
#include "state/BinaryData.h"
#include "state/MemoryStream.h"
#include "support/ParameterValues.h"

namespace cinder::test {
namespace {

constexpr const char* code = "KCnd";
using Values = std::vector<float>;

/// A file with a count of its own.
std::string presetBytes(std::int32_t version, std::int32_t count, const Values& values) {
    std::ostringstream stream;
    BinaryDataWriter writer(stream);
    writer.writeHeader(code, version);
    writeValue(stream, count);
    writeValues(stream, values.data(), values.size());
    return stream.str();
}

bool loadInto(GenericParameterOwner& owner, std::string_view bytes) {
    MemoryStream stream(bytes);
    BinaryDataReader reader(stream);
    CustomPresetLoader loader(&owner, code, presetVersion);
    return load(loader, reader, anyVersion);
}

struct LoadFixture {
    Rng rng = Rng::fromEnvironment();
    StandaloneParameters tree;   // what is loaded into
    StandaloneParameters other;  // what is loaded

    LoadFixture() { randomise(other, rng); }

    /// Into a tree that is anywhere, so that a reset is seen.
    bool load(std::string_view bytes) {
        randomise(tree, rng);
        return loadInto(tree, bytes);
    }
};

TEST_CASE(
    "load: what a file has is set, what it lacks is at its default, what is more is nothing") {
    LoadFixture fixture;
    INFO("seed " << fixture.rng.seed());
    const Values values = valuesOf(fixture.other), defaults = defaultValues(fixture.other);
    constexpr std::int32_t huge = std::numeric_limits<std::int32_t>::max();
    struct Case {
        std::int32_t count;
        std::size_t held;
        bool isGood;
        std::size_t expected;  // that many values of the file; the others at default, or 0 in range
    };
    for (const Case& row : {Case{899, 899, true, 899},
                            {500, 500, true, 500},
                            {0, 0, true, 0},
                            {500, 899, true, 500},
                            {1000, 1000, true, 899},
                            {1000, 899, true, 899},
                            {huge, 899, true, 899},
                            {899, 898, false, 898},
                            {huge, 20, false, 20},
                            {1, 0, false, 0}}) {
        INFO(row.count << " values, " << row.held << " of them there");
        Values held = values;
        held.resize(row.held, 7.0f);
        CHECK(fixture.load(presetBytes(4, row.count, held)) == row.isGood);
        const Values loaded = valuesOf(fixture.tree);
        for (std::size_t i = 0; i < loaded.size(); ++i) {
            const AbstractPluginParameter& parameter = *fixture.tree.parameter(static_cast<int>(i));
            const bool isMissing = static_cast<std::int32_t>(i) < row.count;
            const float zero = std::clamp(0.0f, parameter.minimum(), parameter.maximum());
            const float expected = i < row.expected ? values[i] : isMissing ? zero : defaults[i];
            INFO(parameter.getName());
            REQUIRE(loaded[i] == doctest::Approx(expected).epsilon(2e-7));
        }
    }
}

TEST_CASE("load: a file that is not ours changes nothing, wherever a good one ends") {
    LoadFixture fixture;
    INFO("seed " << fixture.rng.seed());
    const Values values = valuesOf(fixture.other);
    randomise(fixture.tree, fixture.rng);
    const Values before = valuesOf(fixture.tree);
    const std::string good = presetBytes(4, 899, values);
    for (const std::int32_t version : {5, 0, -1, -2, std::numeric_limits<std::int32_t>::min()})
        CHECK(!loadInto(fixture.tree, presetBytes(version, 899, values)));
    CHECK(!loadInto(fixture.tree, presetBytes(4, -1, values)));
    CHECK(!loadInto(fixture.tree, "KCne" + good.substr(4)));
    for (std::size_t length = 0; length < 12; ++length)
        CHECK(!loadInto(fixture.tree, std::string_view(good).substr(0, length)));
    CHECK(valuesOf(fixture.tree) == before);

    StandaloneParameters expected;
    for (std::size_t length = 12; length < good.size(); ++length) {
        CHECK(!loadInto(fixture.tree, std::string_view(good).substr(0, length)));
        const std::size_t whole = (length - 12) / 4;
        if (length % 41 != 0) continue;  // the check costs more than the load
        for (int id = 0; id < 899; ++id)
            expected.parameter(id)->setValue(
                static_cast<std::size_t>(id) < whole ? values[static_cast<std::size_t>(id)] : 0.0f,
                0);
        REQUIRE(valuesOf(fixture.tree) == valuesOf(expected));
    }
    CHECK(loadInto(fixture.tree, good));
    CHECK(valuesOf(fixture.tree) == values);
}

TEST_CASE("load: numbers that are none change nothing, endless and huge ones end at the range") {
    LoadFixture fixture;
    INFO("seed " << fixture.rng.seed());
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    for (const float wild : {infinity, -infinity, 1e30f, -1e30f, nan}) {
        INFO(wild);
        randomise(fixture.tree, fixture.rng);
        const Values before = valuesOf(fixture.tree);
        CHECK(loadInto(fixture.tree, presetBytes(4, 899, Values(899, wild))));
        for (int id = 0; id < 899; ++id) {
            const AbstractPluginParameter& parameter = *fixture.tree.parameter(id);
            const float expected = wild > 0.0f   ? parameter.maximum()
                                   : wild < 0.0f ? parameter.minimum()
                                                 : before[static_cast<std::size_t>(id)];
            REQUIRE(parameter.value() == expected);
        }
    }
}

/// Hears of brackets alone.
struct BracketOwner final : std::vector<AbstractPluginParameter*>, GenericPluginBase {
    BracketOwner() : GenericPluginBase(stereoLayout, 0, this) {}
    void beginUpdate() override { ++begun; }
    void endUpdate() override { ++ended; }
    void requestHostRefresh() override {}
    void parameterChanged(int, float, unsigned) override {}
    int begun = 0, ended = 0;
};

TEST_CASE("load: one bracket, and none for a file that is refused") {
    BracketOwner owner;
    ParameterCollection collection{&owner, {}, {}};
    CollectionPresetLoader loader(collection, code);
    CHECK(collection.magic == code);
    const auto loadBytes = [&](const std::string& bytes, const char* magic) {
        MemoryStream stream(bytes);
        BinaryDataReader reader(stream);
        return load(loader, reader, 1, magic);
    };
    CHECK(loadBytes(presetBytes(1, 0, {}), ""));
    CHECK(owner.begun == 1);
    CHECK(!loadBytes(presetBytes(2, 0, {}), ""));
    CHECK(!loadBytes(presetBytes(1, -1, {}), ""));
    CHECK(!loadBytes(presetBytes(1, 0, {}), "Othr"));
    CHECK(loadBytes("Othr" + presetBytes(1, 0, {}).substr(4), "Othr"));
    CHECK(owner.begun == 2);
    CHECK(owner.ended == 2);
}

}  // namespace
}  // namespace cinder::test
