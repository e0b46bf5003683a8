#include "presets/format/PresetContent.h"

#include <doctest/doctest.h>

#include <limits>
#include <sstream>
#include <string>

#include "params/tree/StandaloneParameters.h"
#include "presets/format/ComponentKind.h"
#include "presets/format/ParameterText.h"
#include "presets/format/PresetConversion.h"
#include "presets/format/PresetMap.h"
#include "state/BinaryData.h"
#include "state/MemoryStream.h"
#include "support/Hex.h"
#include "support/Rng.h"

namespace cinder::test {
namespace {

std::string bytesOfPreset(const PresetContent& content) {
    std::ostringstream stream;
    BinaryDataWriter writer(stream);
    REQUIRE(writePresetContent(writer, "KCnd", content));
    return stream.str();
}

std::optional<PresetContent> presetFrom(std::string_view bytes, std::size_t most = 899) {
    MemoryStream stream(bytes);
    BinaryDataReader reader(stream);
    return readPresetContent(reader, "KCnd", most);
}

TEST_CASE("PresetContent: bytes are fixed; an end in the middle and a false count do no harm") {
    const PresetContent content{4, {1.0f, -0.5f}};
    const std::string bytes = fromHex(R"(4b 43 6e 64 [KCnd]  04 00 00 00 [version]
        02 00 00 00 [count]  00 00 80 3f [1]  00 00 00 bf [-0.5])");
    REQUIRE(bytesOfPreset(content) == bytes);
    CHECK(presetFrom(bytes + "more") == content);
    CHECK(presetFrom(bytes, 1) == PresetContent{4, {1.0f}});
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const auto read = presetFrom(std::string_view(bytes).substr(0, length));
        REQUIRE(read.has_value() == (length >= 12));
        if (read) CHECK(*read == PresetContent{4, {length < 16 ? 0.0f : 1.0f, 0.0f}, false});
    }
    CHECK(!presetFrom("KCnx" + bytes.substr(4)));
    CHECK(!presetFrom(bytes.substr(0, 8) + fromHex("ff ff ff ff") + bytes.substr(12)));
    const auto endless = presetFrom(bytes.substr(0, 8) + fromHex("ff ff ff 7f") + bytes.substr(12));
    REQUIRE(endless);
    CHECK(endless->values.size() == 899);
    CHECK(endless->values[1] == -0.5f);
    CHECK(!endless->whole);
}

/// Whatever a parameter can have.
std::vector<float> randomValues(const StandaloneParameters& tree, Rng& rng) {
    std::vector<float> values;
    for (int id = 0; id < tree.parameterCount(); ++id) {
        const AbstractPluginParameter& parameter = *tree.parameter(id);
        values.push_back(
            settledValue(parameter, parameter.denormalize(static_cast<float>(rng.real(0.0, 1.0)))));
    }
    return values;
}

TEST_CASE("PresetConversion: to every layout and back; what a file can't hold is no loss unseen") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const StandaloneParameters tree;
    struct Case {
        PresetLayout layout;
        int count;
    };
    for (const Case& row : {Case{*presetLayout(4), 899},
                            {*factoryLayout(4), 893},
                            {*presetLayout(3), 898},
                            {*factoryLayout(3), 898},
                            {*factoryLayout(2), 768},
                            {*factoryLayout(1), 767}}) {
        INFO("version " << row.layout.version << ", " << row.count << " values");
        REQUIRE(row.layout.count == row.count);
        std::vector<float> values = randomValues(tree, rng);
        std::string fault;
        const bool isWhole = row.count == 899;
        CHECK(contentOf(values, row.layout, tree, fault).has_value() == isWhole);
        CHECK(fault.empty() == isWhole);
        if (const auto map = presetMapOf(row.layout.version))
            for (const std::int32_t id : map->added)
                values[static_cast<std::size_t>(id)] = tree.parameter(id)->defaultValue();
        for (std::size_t id = static_cast<std::size_t>(row.count); id < 899; ++id)
            values[id] = tree.parameter(static_cast<int>(id))->defaultValue();
        const auto content = contentOf(values, row.layout, tree, fault);
        REQUIRE(content);
        CHECK(content->values.size() == static_cast<std::size_t>(row.count));
        CHECK(presentValues(*content, tree) == values);
        if (row.layout.version < 4) CHECK(content->values[12] == 0.0f);
    }
    for (const std::int32_t version : {-1, 0, 5}) {
        CHECK(!presetLayout(version));
        CHECK(!factoryLayout(version));
        CHECK(!presentValues({version, std::vector<float>(899)}, tree));
    }
    // What no parameter can have comes to what a load makes of it; what the file lacks, to
    // defaults.
    constexpr float infinity = std::numeric_limits<float>::infinity();
    std::vector<float> wild(500, 1e30f);
    wild[0] = std::numeric_limits<float>::quiet_NaN();
    wild[1] = -infinity;
    wild[9] = 3.9f;
    const auto values = *presentValues({4, wild}, tree);
    CHECK(values[0] == 0.0f);
    CHECK(values[1] == -1.0f);
    CHECK(values[2] == 36.0f);
    CHECK(values[9] == 3.0f);
    CHECK(values[639] == 1.0f);
}

TEST_CASE("ComponentKind: values are those of a set, but for a band's crossover") {
    const StandaloneParameters tree;
    const AbstractParameterSetArray* const lists[] = {&tree.bands, &tree.xlfos, &tree.egs,
                                                      &tree.efs, &tree.midiSources};
    REQUIRE(componentKinds().size() == 5);
    for (std::size_t kind = 0; kind < 5; ++kind) {
        const ComponentKind& row = componentKinds()[kind];
        INFO(row.extension);
        CHECK(componentKindOf(row.extension) == &row);
        REQUIRE(lists[kind]->setCount() == row.numSets);
        for (int i = 0; i < row.numSets; ++i) {
            const PluginParameterSet& set = *lists[kind]->set(i);
            const std::vector<std::int32_t> ids = row.ids(i);
            REQUIRE(ids.size() == static_cast<std::size_t>(set.parameterCount() - (kind == 0)));
            for (std::size_t k = 0; k < ids.size(); ++k)
                CHECK(ids[k] == set.parameter(static_cast<int>(k))->getId());
        }
        CHECK(tree.parameter(row.firstId)->getName().starts_with(row.setName));
    }
    CHECK(componentKindOf(".EG") == &componentKinds()[2]);
    CHECK(!componentKindOf(".knp"));

    const ComponentKind& band = componentKinds()[0];
    std::vector<float> values = defaultValues(tree);
    values[10] = 0.7f;
    std::string fault;
    const auto content = componentContentOf(values, band, tree, fault);
    REQUIRE(content);
    CHECK(content->version == 1);
    CHECK(content->values.size() == 14);
    CHECK(componentValues(*content, band, tree) == values);
    values[20] = 9.0f;
    CHECK(!componentContentOf(values, band, tree, fault));
    CHECK(fault.find("Band 1 Crossover Frequency") != std::string::npos);
}

}  // namespace
}  // namespace cinder::test
