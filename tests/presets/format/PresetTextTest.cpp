#include "presets/format/PresetText.h"

#include <doctest/doctest.h>

#include <bit>
#include <cmath>
#include <string>

#include "params/tree/StandaloneParameters.h"
#include "presets/format/ParameterText.h"
#include "presets/format/PresetConversion.h"
#include "support/Rng.h"

namespace cinder::test {
namespace {

TEST_CASE("exactText: any value of any parameter comes back to the bit") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const StandaloneParameters tree;
    int numStored = 0, numTexts = 0;
    for (int id = 0; id < tree.parameterCount(); ++id) {
        const AbstractPluginParameter& parameter = *tree.parameter(id);
        INFO(parameter.getName());
        const float low = parameter.minimum(), high = parameter.maximum();
        std::vector<float> values{low, high, std::nextafter(low, high), std::nextafter(high, low),
                                  parameter.defaultValue()};
        for (int i = 0; i < 20; ++i)
            values.push_back(parameter.denormalize(static_cast<float>(rng.real(0.0, 1.0))));
        for (const float raw : values) {
            const float value = settledValue(parameter, raw);
            const std::string text = exactText(parameter, value);
            INFO(text);
            const auto read = valueOfText(parameter, text);
            REQUIRE(read);
            CHECK(std::bit_cast<std::uint32_t>(*read) == std::bit_cast<std::uint32_t>(value));
            numStored += text.starts_with("stored");
            ++numTexts;
        }
    }
    CHECK(numStored * 20 < numTexts);  // nearly all can be said in the parameter's own words

    const auto textOf = [&](const char* name, float value) {
        return exactText(*tree.named(name), value);
    };
    CHECK(textOf("Band 1 Drive", 0.45f) == "45.00%");
    const auto typed = valueOfText(*tree.named("Band 1 Drive"), "45.6789%");
    CHECK(textOf("Band 1 Drive", *typed) == "45.6789%");
    CHECK(textOf("Band 1 Level", -1.0f) == "-INF dB");
    CHECK(textOf("Band 1 Style", 1.0f) == "Warm Tube");
    CHECK(valueOfText(*tree.named("Band 1 Drive"), "STORED  7") == 1.0f);
    CHECK(!valueOfText(*tree.named("Band 1 Drive"), "stored much"));
    CHECK(!valueOfText(*tree.named("Band 1 Drive"), "stored 0.5 or so"));
}

TEST_CASE("PresetText: head and values come back from their text") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const StandaloneParameters tree;
    const PresetHead head{"Glues: drums = one.", "drums, bus", 2, "free", "drums"};
    std::vector<float> values = defaultValues(tree);
    CHECK(writePresetText({}, values, tree).empty());
    for (int i = 0; i < 200; ++i) {
        const int id = rng.integer(0, tree.parameterCount() - 1);
        const AbstractPluginParameter& parameter = *tree.parameter(id);
        values[static_cast<std::size_t>(id)] =
            settledValue(parameter, parameter.denormalize(static_cast<float>(rng.real(0.0, 1.0))));
    }
    TextFault fault;
    const auto read = readPresetText(writePresetText(head, values, tree), tree, fault);
    INFO(fault.line << ": " << fault.what);
    REQUIRE(read);
    CHECK(read->head == head);
    CHECK(read->values(tree) == values);

    const auto typed = readPresetText(
        "\xef\xbb\xbfIntent:Loud.\r\n# a note\r\n\r\n  band-1-style=warm tube\n10 = 45\n"
        "Mix = 20%\nBand 1 Feedback Frequency = C#4\nMix = 30%",
        tree, fault);
    REQUIRE(typed);
    CHECK(typed->head == PresetHead{"Loud.", {}, {}, {}, {}});
    CHECK(typed->settings.size() == 5);
    CHECK(typed->settings.front().line == 4);
    const auto typedValues = typed->values(tree);
    CHECK(typedValues[9] == 1.0f);
    CHECK(typedValues[10] == 0.45f);
    CHECK(typedValues[4] == doctest::Approx(30.0));
}

TEST_CASE("PresetText: a line that is wrong is named") {
    const StandaloneParameters tree;
    struct Case {
        const char* text;
        int line;
        const char* what;
    };
    const Case cases[] = {
        {"Mix = 1%\n\nMiks = 2%", 3, "no parameter \"Miks\""},
        {"Drive = 3%", 1, "did you mean Band 1 Drive, Band 1 Drive Pan"},
        {"# x\nMix", 2, "NAME=VALUE, not \"Mix\""},
        {"= 3", 1, "NAME=VALUE"},
        {"Band 1 Style = Loud", 1, "\"Loud\" is no value of Band 1 Style"},
        {"Mix =", 1, "\"\" is no value"},
        {"Mix = 1%\nTags: a", 2, "fields come first"},
        {"Tags: a\nTags: b", 2, "a second Tags"},
        {"Format: 1\nFormat: 2", 2, "a second Format"},
        {"Format: 5", 1, "no version"},
        {"Format: 0", 1, "no version"},
        {"Format: two", 1, "no version"},
        {"Intent:", 1, "says nothing"},
        {"Mood: sad", 1, "no field \"Mood\""},
        {"Loudness: freely", 1, "Loudness is free"},
    };
    for (const Case& row : cases) {
        INFO(row.text);
        TextFault fault;
        CHECK(!readPresetText(row.text, tree, fault));
        CHECK(fault.line == row.line);
        INFO(fault.what);
        CHECK(fault.what.find(row.what) != std::string::npos);
    }
}

}  // namespace
}  // namespace cinder::test
