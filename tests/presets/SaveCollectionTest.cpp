#include <doctest/doctest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "params/tree/StandaloneParameters.h"
#include "presets/PresetFiles.h"
#include "presets/files/Paths.h"
#include "presets/format/ComponentKind.h"
#include "support/Hex.h"
#include "support/TemporaryFolder.h"

namespace cinder::test {
namespace {

constexpr const char* code = "KCnd";

ParameterCollection collectionOf(StandaloneParameters& tree, const std::vector<std::int32_t>& ids) {
    ParameterCollection collection{&tree, {}, {}};
    for (const std::int32_t id : ids)
        collection.parameters.push_back(tree.parameter(id));
    return collection;
}

TEST_CASE("saveCollection: an EF's file to the byte; a part of it is replaced and no more") {
    const TemporaryFolder folder;
    const std::string path = systemPath(folder / "a.ef");
    StandaloneParameters tree;
    ParameterCollection ef = collectionOf(tree, componentKindOf(".ef")->ids(1));
    const std::string head = fromHex("4b 43 6e 64 [KCnd]  01 00 00 00 [version]  03 00 00 00 [3]");
    ef.parameters[1]->setValue(0.5f, 0);
    ef.parameters[2]->setValue(0.25f, 0);
    const std::string first = head + fromHex("00 00 00 00  00 00 00 3f  00 00 80 3e");
    // A part of no file is all of it.
    REQUIRE(saveCollection(ef, path, code, 1, 0, 1));
    CHECK(bytesOf(folder / "a.ef") == first);
    CHECK(ef.magic == code);

    ef.parameters[1]->setValue(1.0f, 0);
    ef.parameters[2]->setValue(1.0f, 0);
    const int id = ef.parameters[1]->getId();
    REQUIRE(saveCollection(ef, path, code, 1, id, 1));
    const std::string patched = head + fromHex("00 00 00 00  00 00 80 3f  00 00 80 3e");
    CHECK(bytesOf(folder / "a.ef") == patched);
    REQUIRE(saveCollection(ef, path, code, 1, id - 1, 1));  // the end is not in the range
    CHECK(bytesOf(folder / "a.ef") == patched);

    // Another version or magic is no file to be patched, but one to be replaced.
    CHECK(!saveCollection(ef, path, code, 2, id, 1));
    ef.magic = "Othr";
    CHECK(!saveCollection(ef, path, code, 1, id, 1));
    CHECK(bytesOf(folder / "a.ef") == patched);
    ef.magic.clear();

    // A longer file keeps its end, a shorter one is what it would have been loaded as.
    putBytes(folder / "a.ef", patched + "tail");
    REQUIRE(saveCollection(ef, path, code, 1, id, 1));
    CHECK(bytesOf(folder / "a.ef") == patched + "tail");
    REQUIRE(saveCollection(ef, path, code, 1));
    const std::string last = head + fromHex("00 00 00 00  00 00 80 3f  00 00 80 3f");
    CHECK(bytesOf(folder / "a.ef") == last + "tail");
    putBytes(folder / "a.ef", patched.substr(0, 8) + fromHex("01 00 00 00  00 00 80 3f"));
    REQUIRE(saveCollection(ef, path, code, 1, id, 1));
    StandaloneParameters loaded;
    ParameterCollection other = collectionOf(loaded, componentKindOf(".ef")->ids(0));
    REQUIRE(loadCollection(other, path, code, 1));
    CHECK(other.parameters[0]->value() == 1.0f);
    CHECK(other.parameters[1]->value() == 1.0f);
    CHECK(other.parameters[2]->value() == other.parameters[2]->defaultValue());

    CHECK(!saveCollection(ef, systemPath(folder.path), code, 1));
    CHECK(!saveCollection(ef, systemPath(folder / "none/a.ef"), code, 1));
    CHECK(!loadCollection(ef, systemPath(folder / "none.ef"), code, 1));
    CHECK(!loadCollection(ef, path, code, 2));
}

TEST_CASE("saveCollection, loadCollection: a component moves to another of its kind, and only it") {
    const TemporaryFolder folder;
    for (const ComponentKind& kind : componentKinds()) {
        INFO(kind.extension);
        const std::string path = systemPath(folder / ("a" + std::string(kind.extension)));
        StandaloneParameters from, to;
        for (int id = 0; id < from.parameterCount(); ++id)
            from.parameter(id)->setValue(from.parameter(id)->maximum(), 0);
        ParameterCollection source = collectionOf(from, kind.ids(0));
        ParameterCollection target = collectionOf(to, kind.ids(kind.numSets - 1));
        REQUIRE(saveCollection(source, path, code, componentVersion));
        CHECK(bytesOf(folder / ("a" + std::string(kind.extension))).size() ==
              12 + 4 * static_cast<std::size_t>(kind.numValues));
        REQUIRE(loadCollection(target, path, code, componentVersion));
        for (std::size_t i = 0; i < source.parameters.size(); ++i)
            CHECK(target.parameters[i]->value() == source.parameters[i]->value());
        for (AbstractPluginParameter* const parameter : target.parameters)
            parameter->resetToDefault(0);
        for (int id = 0; id < to.parameterCount(); ++id)
            REQUIRE(to.parameter(id)->value() == to.parameter(id)->defaultValue());
    }
}

TEST_CASE("saveCollection: a preset has 3,608 bytes and loads as it was") {
    const TemporaryFolder folder;
    const std::string path = systemPath(folder / "a.knp");
    StandaloneParameters tree, other;
    ParameterCollection all{&tree, {}, {}};
    for (int id = 0; id < tree.parameterCount(); ++id) {
        all.parameters.push_back(tree.parameter(id));
        tree.parameter(id)->setValue(tree.parameter(id)->denormalize(0.7f), 0);
    }
    REQUIRE(saveCollection(all, path, code, 4));
    CHECK(bytesOf(folder / "a.knp").size() == 3608);
    REQUIRE(loadPresetFile(other, path, code, 4));
    for (int id = 0; id < tree.parameterCount(); ++id)
        REQUIRE(other.parameter(id)->value() == tree.parameter(id)->value());
    CHECK(!loadPresetFile(other, path, code, 3));
    CHECK(!loadPresetFile(other, systemPath(folder / "none.knp"), code, 4));
}

}  // namespace
}  // namespace cinder::test
