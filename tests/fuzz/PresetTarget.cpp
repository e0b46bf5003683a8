#include <doctest/doctest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <numeric>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/FuzzTarget.h"
#include "fuzz/ParameterValues.h"
#include "params/AbstractPluginParameter.h"
#include "params/tree/StandaloneParameters.h"
#include "presets/CollectionPresetLoader.h"
#include "presets/CustomPresetLoader.h"
#include "presets/format/ComponentKind.h"
#include "presets/format/PresetConversion.h"
#include "presets/format/PresetMap.h"
#include "presets/format/PresetText.h"
#include "state/BinaryFile.h"

namespace cinder::test {

namespace {

constexpr const char* code = "KCnd";
using Ids = std::vector<std::int32_t>;

Ids allIds(const StandaloneParameters& tree) {
    Ids ids(static_cast<std::size_t>(tree.parameterCount()));
    std::iota(ids.begin(), ids.end(), 0);
    return ids;
}

std::int32_t wordAt(std::string_view bytes, std::size_t at) {
    std::int32_t word = std::numeric_limits<std::int32_t>::min();
    if (at + 4 <= bytes.size()) std::memcpy(&word, bytes.data() + at, sizeof word);
    return word;
}

/// The values of a file, in the plainest way: `ids` says what each position means.
bool setPlainly(std::string_view bytes, const Ids& ids, StandaloneParameters& tree) {
    const auto count = static_cast<std::size_t>(wordAt(bytes, 8));
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (ids[i] < 0) continue;
        AbstractPluginParameter& parameter = *tree.parameter(ids[i]);
        float value = 0.0f;
        const std::size_t at = 12 + 4 * i;
        if (at + 4 <= bytes.size()) std::memcpy(&value, bytes.data() + at, sizeof value);
        i < count ? parameter.setValue(value, 0) : parameter.resetToDefault(0);
    }
    return (bytes.size() - 12) / 4 >= std::min(count, ids.size());
}

bool isOurs(std::string_view bytes) {
    return bytes.starts_with(code) && wordAt(bytes, 8) >= 0;
}

bool loadPlainly(std::string_view bytes, StandaloneParameters& tree) {
    const std::int32_t version = wordAt(bytes, 4);
    if (!isOurs(bytes) || version < 1 || version > presetVersion) return false;
    if (version == presetVersion) return setPlainly(bytes, allIds(tree), tree);
    const PresetMap map = *presetMapOf(version);
    for (const std::int32_t id : map.added)
        tree.parameter(id)->resetToDefault(0);
    return setPlainly(bytes, map.map, tree);
}

bool loadPreset(std::string_view bytes, StandaloneParameters& tree) {
    CustomPresetLoader loader(&tree, code, presetVersion);
    BinaryResourceReader reader(bytes);
    return load(loader, reader, anyVersion);
}

void checkComponent(std::string_view bytes, const ComponentKind& kind, StandaloneParameters& tree,
                    StandaloneParameters& plain) {
    setAllToMaximum(tree);
    setAllToMaximum(plain);
    const Ids ids = kind.ids(kind.numSets - 1);
    ParameterCollection collection;
    collection.owner = &tree;
    for (const std::int32_t id : ids)
        collection.parameters.push_back(tree.parameter(id));
    CollectionPresetLoader loader(collection, code);
    BinaryResourceReader reader(bytes);
    const bool isTaken = isOurs(bytes) && wordAt(bytes, 4) == componentVersion;
    const bool isLoaded = load(loader, reader, componentVersion);
    CHECK(isLoaded == (isTaken && setPlainly(bytes, ids, plain)));
    CHECK(agree(valuesOf(tree), valuesOf(plain)));
}

/// What the command line makes of a file is what an instance would have.
void checkConversion(std::string_view bytes, StandaloneParameters& tree) {
    BinaryResourceReader reader(bytes);
    const auto content = readPresetContent(reader, code, 899);
    CHECK(content.has_value() == isOurs(bytes));
    if (!content) return;
    const auto values = presentValues(*content, tree);
    const bool isKnown = content->version >= 1 && content->version <= presetVersion;
    REQUIRE(values.has_value() == isKnown);
    if (!values) return;
    setAllToDefault(tree);
    loadPreset(bytes, tree);
    CHECK(agree(*values, valuesOf(tree)));

    std::string fault;
    const auto again = contentOf(*values, *presetLayout(presetVersion), tree, fault);
    REQUIRE(again);
    CHECK((presentValues(*again, tree) == values));
    constexpr std::size_t quickToWrite = 64;
    if (content->values.size() > quickToWrite) return;
    TextFault where;
    const auto text = readPresetText(writePresetText({}, *values, tree), tree, where);
    REQUIRE_MESSAGE(text, where.what);
    CHECK((text->values(tree) == *values));
}

}  // namespace

void fuzzPreset(std::string_view bytes) {
    static StandaloneParameters tree, plain;
    setAllToMaximum(tree);
    setAllToMaximum(plain);
    CHECK(loadPreset(bytes, tree) == loadPlainly(bytes, plain));
    CHECK(agree(valuesOf(tree), valuesOf(plain)));
    const auto kinds = componentKinds();
    checkComponent(bytes, kinds[bytes.size() % kinds.size()], tree, plain);
    checkConversion(bytes, tree);
}

void fuzzPresetMap(std::string_view bytes) {
    BinaryResourceReader reader(bytes);
    const auto map = readPresetMap(reader);
    if (!map) return;
    CHECK(map->newCount >= 1);
    CHECK(map->map.size() >= 1);
    // All numbers are counted in 64 bits here, so that none can wrap into the right one.
    std::int64_t numAdded = std::int64_t{map->newCount} - std::ssize(map->map);
    for (const std::int32_t id : map->map) {
        CHECK((id >= PresetMap::dropped && id < map->newCount));
        numAdded += id == PresetMap::dropped;
    }
    CHECK(std::ssize(map->added) == numAdded);
    for (const std::int32_t id : map->added)
        CHECK((id >= 0 && id < map->newCount));

    std::ostringstream written;
    BinaryDataWriter writer(written);
    CHECK(writePresetMap(writer, *map));
    CHECK(written.view().substr(8) == bytes.substr(8, written.view().size() - 8));
}

void fuzzPresetText(std::string_view bytes) {
    static const StandaloneParameters tree;
    TextFault fault;
    const auto text = readPresetText(bytes, tree, fault);
    if (!text) {
        CHECK(!fault.what.empty());
        CHECK(fault.line <= 1 + std::count(bytes.begin(), bytes.end(), '\n'));
        return;
    }
    const std::vector<float> values = text->values(tree);
    const std::string written = writePresetText(text->head, values, tree);
    const auto again = readPresetText(written, tree, fault);
    REQUIRE_MESSAGE(again, fault.what);
    CHECK((again->head == text->head));
    CHECK((again->values(tree) == values));
    CHECK(writePresetText(again->head, values, tree) == written);
}

}  // namespace cinder::test
