#include <doctest/doctest.h>

#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/FuzzTarget.h"
#include "fuzz/ParameterValues.h"
#include "params/FloatPluginParameter.h"
#include "params/IndexedPluginParameter.h"
#include "params/tree/StandaloneParameters.h"
#include "state/MemoryStream.h"
#include "state/chunks/ChunkRecord.h"
#include "state/chunks/InstanceState.h"
#include "state/chunks/ParameterState.h"
#include "state/chunks/StateContent.h"

namespace cinder::test {

namespace {

constexpr const char* code = "KCnd";
constexpr unsigned flags = AbstractPluginParameter::hostKnows;

/// As few parameters as show every kind of range: a short input can be a whole state of theirs.
class FewParameters final : private std::vector<AbstractPluginParameter*>,
                            public GenericPluginBase {
public:
    FewParameters() : GenericPluginBase(stereoLayout, 0, this) {}
    void beginUpdate() override {}
    void endUpdate() override {}
    void requestHostRefresh() override {}
    void parameterChanged(int, float, unsigned) override {}

private:
    FloatPluginParameter gain{this, "Gain", {-36.0f, 36.0f, 1.0f}};
    IndexedPluginParameter<int> style{this, "Style", {1, 4, 2}};
    FloatPluginParameter mix{this, "Mix", {0.5f, 1.0f, 0.75f}};
};

/// The first section, read in the plainest way.
ParameterStateResult applyPlainly(std::string_view bytes, GenericParameterOwner& tree) {
    std::int32_t count = -1;
    if (bytes.size() >= 12 && bytes.starts_with("KNBS"))
        std::memcpy(&count, bytes.data() + 8, sizeof count);
    if (count < 0) return {};
    for (int id = 0; id < tree.parameterCount(); ++id) {
        const std::size_t at = 12 + 4 * static_cast<std::size_t>(id);
        float value = 0.0f;
        if (at + 4 <= bytes.size()) std::memcpy(&value, bytes.data() + at, sizeof value);
        if (id < count)
            tree.parameter(id)->setValue(value, flags);
        else
            tree.parameter(id)->resetToDefault(flags);
    }
    return {.applied = true, .good = (bytes.size() - 12) / 4 >= static_cast<std::size_t>(count)};
}

void checkInstance(const InstanceState& instance) {
    std::stringstream stream;
    CHECK(writeInstanceState(stream, code, instance));
    CHECK(readInstanceState(stream, code) == instance);
}

void checkRecord(std::string_view bytes) {
    const auto record = decodeChunk(bytes);
    if (!record) return;
    const auto again = decodeChunk(encodeChunk(*record));
    REQUIRE(again);
    CHECK(again->data == record->data);
    CHECK(again->name == record->name.substr(0, 31));
}

/// `tree` and `plain` are two of a kind.
void checkState(std::string_view bytes, GenericParameterOwner& tree, GenericParameterOwner& plain) {
    setAllToMaximum(tree);
    setAllToMaximum(plain);
    MemoryStream stream(bytes);
    const ParameterStateResult read = readParameterState(stream, tree);
    const ParameterStateResult expected = applyPlainly(bytes, plain);
    CHECK(read.applied == expected.applied);
    CHECK(read.good == expected.good);
    const std::vector<float> values = valuesOf(tree);
    CHECK(agree(values, valuesOf(plain)));
    for (int id = 0; id < tree.parameterCount(); ++id) {
        const AbstractPluginParameter& parameter = *tree.parameter(id);
        const bool isInRange =
            parameter.value() >= parameter.minimum() && parameter.value() <= parameter.maximum();
        if (!isInRange) FAIL("parameter " << id);
    }
    std::stringstream written;
    CHECK(writeParameterState(written, tree));
    setAllToMaximum(tree);
    CHECK(readParameterState(written, tree).good);
    CHECK(agree(valuesOf(tree), values));

    const auto instance = read.good ? readInstanceState(stream, code) : std::nullopt;
    if (instance) checkInstance(*instance);
    MemoryStream whole(bytes);
    const auto content = readStateContent(whole, code, values.size());
    CHECK(content.has_value() == instance.has_value());
}

}  // namespace

void fuzzState(std::string_view bytes) {
    static FewParameters few, plainFew;
    checkState(bytes, few, plainFew);
    static StandaloneParameters all, plainAll;
    constexpr std::size_t worthTheTime = 3000;
    if (bytes.size() > worthTheTime) checkState(bytes, all, plainAll);

    // What stands behind a state stands at the start of other inputs, where it is found sooner.
    MemoryStream instanceAlone(bytes), bypassAlone(bytes);
    if (const auto alone = readInstanceState(instanceAlone, code)) checkInstance(*alone);
    const auto isBypassed = readBypassState(bypassAlone);
    CHECK(isBypassed.has_value() == (bytes.starts_with("KNEx") && bytes.size() >= 12));
    checkRecord(bytes);
    if (const auto name = PresetNameChunk::read(bytes)) CHECK(name->size() < 64);
}

}  // namespace cinder::test
