#include <doctest/doctest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "params/FloatPluginParameter.h"
#include "params/FloatPluginParameterUnit.h"
#include "params/IndexedPluginParameter.h"
#include "params/TestOwner.h"
#include "params/tapers/Tapers.h"
#include "support/Rng.h"

namespace cinder {
namespace {

using test::TestOwner;

/// A continuous parameter of each kind that a product has.
struct Parameters {
    enum Kind {
        Crossover,
        Rate,
        Gain,
        Threshold,
        Distance,
        Drive,
        Feedback,
        Mix,
        Pan,
        Hold,
        Delay,
        Transpose,
        Compression,
        Slope,
        Depth,
        numKinds
    };

    Parameters() {
        for (int i = 0; i < numKinds; ++i)
            list.push_back(std::make_unique<FloatPluginParameter>(&owner, "Parameter"));
        add(Crossover, {5.321928f, 14.13571f}, tapers::none, &units::expFreq);
        add(Rate, {0.0f, 1.0f}, tapers::frequency, &units::hz).setTargetRange(0.02f, 500.0f);
        add(Gain, {-36.0f, 36.0f}, tapers::gain, &units::dB);
        add(Threshold, {0.0f, 1.0f}, tapers::threshold, &units::dBTP);
        add(Distance, {0.0f, 60.0f}, tapers::none, &units::dBRange);
        add(Drive, {0.0f, 1.0f}, tapers::none, &units::percent).setDisplayRange(0.0f, 100.0f);
        add(Feedback, {0.0f, 1.0f}, tapers::feedback).setUnitWords(units::percent);
        at(Feedback).setDisplayRange(0.0f, 100.0f);
        add(Mix, {0.0f, 100.0f}, tapers::none, &units::percent).setTargetRange(-1.0f, 1.0f);
        at(Mix).setDisplayRange(0.0f, 100.0f);
        add(Pan, {-1.0f, 1.0f}, tapers::none);
        add(Hold, {0.0f, 1.0f}, tapers::feedback, &units::sec).setTargetRange(0.0f, 19.0f);
        add(Delay, {0.0f, 500.0f}, tapers::none, &units::ms).display.prefix = std::string("about");
        add(Transpose, {-2.0f, 2.0f}, tapers::none, &units::octaves);
        add(Compression, {1.0f, 20.0f}, tapers::none, &units::ratio);
        add(Slope, {-48.0f, 0.0f}, tapers::none, &units::slope);
        add(Depth, {0.0f, 1.0f}, tapers::feedback).display.label = "deep";
    }
    FloatPluginParameter& at(int kind) { return *list[static_cast<std::size_t>(kind)]; }
    FloatPluginParameter& add(Kind kind, FloatRange range, const Taper& taper,
                              const FloatPluginParameterUnit* unit = nullptr) {
        FloatPluginParameter& parameter = at(kind);
        parameter.setRange(range);
        if (unit) parameter.setUnit(*unit);
        parameter.display.toTarget = taper.toTarget;
        parameter.display.fromTarget = taper.fromTarget;
        if (taper.toDisplay) parameter.display.toDisplay = taper.toDisplay;
        if (taper.fromDisplay) parameter.display.fromDisplay = taper.fromDisplay;
        return parameter;
    }

    TestOwner owner;
    std::vector<std::unique_ptr<FloatPluginParameter>> list;
};

TEST_CASE("Parameter text: what is typed, and what it then reads") {
    struct Row {
        Parameters::Kind kind;
        const char* typed;
        const char* text;
    };
    using P = Parameters;
    const Row rows[] = {{P::Crossover, "1,5 kHz", "1500.0 Hz"},
                        {P::Crossover, "  1.5K ", "1500.0 Hz"},
                        {P::Crossover, "440", "440.00 Hz"},
                        {P::Crossover, "A4", "440.00 Hz"},
                        {P::Crossover, "c#3 25", "140.61 Hz"},
                        {P::Crossover, "1e9 hz please", "18000 Hz"},
                        {P::Crossover, "-5", "40.000 Hz"},
                        {P::Crossover, "50%", "848.53 Hz"},  // the middle of the octaves
                        {P::Rate, "1", "1.000 Hz"},
                        {P::Rate, "0.2 khz", "200.00 Hz"},
                        {P::Rate, "0 %", "0.020 Hz"},
                        {P::Gain, "3", "+3.00 dB"},
                        {P::Gain, "-0.001db", "0.00 dB"},
                        {P::Gain, "2x", "+6.02 dB"},
                        {P::Gain, "0.5 *", "-6.02 dB"},
                        {P::Gain, "0X", "-36.00 dB"},
                        {P::Gain, "75%", "+18.00 dB"},
                        {P::Threshold, "12", "-12.00 dBTP"},
                        {P::Threshold, "+12 dbtp", "-12.00 dBTP"},
                        {P::Threshold, "-200", "-INF dBTP"},
                        {P::Distance, "6 dB", "6.00 dB"},
                        {P::Distance, "10x", "20.00 dB"},
                        {P::Drive, "50%", "50.00%"},
                        {P::Drive, "5", "5.000%"},
                        {P::Drive, "1000", "100.0%"},
                        {P::Feedback, "50%", "50.000 %"},
                        {P::Feedback, "16", "16.000 %"},
                        {P::Mix, "12,34", "12.34%"},
                        {P::Pan, "0.5", "0.500"},
                        {P::Pan, "75%", "0.500"},
                        {P::Hold, "500ms", "0.500 sec"},
                        {P::Hold, "0.5 S", "0.500 sec"},
                        {P::Delay, "0.02 sec", "20.000 ms"},
                        {P::Delay, "about 7", "7.000 ms"},
                        {P::Delay, " about7ms", "7.000 ms"},
                        {P::Transpose, "1 oct", "12.000 semitones"},
                        {P::Transpose, "-700 cents", "-7.000 semitones"},
                        {P::Transpose, "5", "5.000 semitones"},
                        {P::Compression, "4:1", "4.00:1"},
                        {P::Slope, "12 dB/oct", "-12.0 dB/oct"},
                        {P::Depth, "0.16 DEEP", "0.160 deep"}};
    Parameters parameters;
    for (const Row& row : rows) {
        FloatPluginParameter& parameter = parameters.at(row.kind);
        INFO("parameter " << row.kind << ", typed: " << std::string(row.typed));
        float value = 0.0f;
        CHECK(parameter.parseText(row.typed, value));
        CHECK(parameter.text(value) == row.text);
    }
    CHECK(parameters.at(P::Crossover).shortText(10.0f, 6) == "1024.0");

    const Row refused[] = {{P::Crossover, "100 dB", ""},
                           {P::Crossover, "H4", ""},
                           {P::Gain, "A4", ""},
                           {P::Gain, "3 dB/oct", ""},
                           {P::Gain, "0x10", ""},
                           {P::Gain, "1 000.5", ""},
                           {P::Pan, "0.5 x", ""},
                           {P::Pan, "", ""},
                           {P::Pan, " ", ""},
                           {P::Pan, "inf", ""},
                           {P::Gain, "-INF dB", ""},
                           {P::Pan, "nan", ""},
                           {P::Depth, "0.1 dee", ""},
                           {P::Pan, "1,000.5", ""},
                           {P::Delay, "about", ""},
                           {P::Pan, "\xc2\xbd", ""},
                           {P::Compression, "4:2", ""},
                           {P::Drive, "5 percent", ""}};
    for (const Row& row : refused) {
        INFO("parameter " << row.kind << ", typed: " << std::string(row.typed));
        float value = 7.0f;
        CHECK(!parameters.at(row.kind).parseText(row.typed, value));
        CHECK(value == 7.0f);
    }
}

TEST_CASE("Parameter text: a note may lie beyond the range, and is clamped when it is set") {
    Parameters parameters;
    FloatPluginParameter& crossover = parameters.at(Parameters::Crossover);
    float value = 0.0f;
    CHECK(crossover.parseText("C0", value));
    CHECK(value < crossover.minimum());
    crossover.setValue(12.0f, 0);
    crossover.setValue(value, 0);
    CHECK(crossover.value() == crossover.minimum());
}

TEST_CASE("Parameter text: every value comes back through its target, its display and its text") {
    constexpr int numPoints = 1000;
    Parameters parameters;
    for (int kind = 0; kind < Parameters::numKinds; ++kind)
        for (int i = 0; i <= numPoints; ++i) {
            const FloatPluginParameter& parameter = parameters.at(kind);
            const float place = static_cast<float>(i) / numPoints;
            const float value = parameter.denormalize(place);
            const float display = parameter.displayFromValue(value);
            INFO("parameter " << kind << ", place " << place << ", value " << value);
            CHECK(parameter.normalize(value) == doctest::Approx(place).epsilon(1e-6));
            // One curve ends before the range does.
            const auto isSame = [&](float other) {
                return std::abs(parameter.normalize(other) - place) <= 4e-5f ||
                       parameter.displayFromValue(other) == display;
            };
            // Below it the logarithm has ended, and all reads as silence.
            const bool isSilent = display <= -179.9f;
            CHECK(isSame(parameter.valueFromTarget(parameter.targetValue(value))));
            if (!isSilent) CHECK(isSame(parameter.valueFromDisplay(display)));
            const std::string text = parameter.text(value);
            float parsed = 0.0f;
            CHECK(parameter.parseText(text, parsed) == !isSilent);
            if (!isSilent) CHECK(parameter.text(parsed) == text);
        }
}

TEST_CASE("Parameter text: hostile text gives a value that can be set, or none") {
    static const std::string pieces[] = {"1",
                                         "9",
                                         "0",
                                         ".",
                                         ",",
                                         "-",
                                         "+",
                                         "e",
                                         "E308",
                                         "1e999",
                                         "-1e-999",
                                         "inf",
                                         "nan",
                                         "0x1p",
                                         "%",
                                         "%s%n",
                                         "kHz",
                                         "dB",
                                         "x",
                                         "*",
                                         "A",
                                         "#",
                                         "b",
                                         " ",
                                         "\t",
                                         "\xff",
                                         "\xc3",
                                         "\xe2\x82\xac",
                                         "about",
                                         std::string(1, '\0'),
                                         std::string(400, '7'),
                                         "0." + std::string(400, '0') + "1",
                                         "sec",
                                         ":1",
                                         "99999999999"};
    test::Rng rng = test::Rng::fromEnvironment();
    Parameters parameters;
    IndexedPluginParameter<int> choice(&parameters.owner, "Choice", {-3, 40, 0});
    int numRead = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (int i = rng.integer(0, 6); i > 0; --i)
            text += pieces[static_cast<std::size_t>(
                rng.integer(0, static_cast<int>(std::size(pieces)) - 1))];
        const int kind = rng.integer(0, Parameters::numKinds - 1);
        FloatPluginParameter& parameter = parameters.at(kind);
        INFO("seed " << rng.seed() << ", parameter " << kind << ", text " << text);
        float value = 12345.0f;
        if (parameter.parseText(text, value)) {
            ++numRead;
            CHECK(!std::isnan(value));
            const bool mayBeNote = parameter.getUnit() && parameter.getUnit()->parseSpecial;
            if (!mayBeNote) CHECK((value >= parameter.minimum() && value <= parameter.maximum()));
        } else {
            CHECK(value == 12345.0f);
        }
        parameter.setValue(value, 0);
        CHECK(
            (parameter.value() >= parameter.minimum() && parameter.value() <= parameter.maximum()));
        const bool isRead = choice.parseText(text, value);
        CHECK((value >= -3.0f && value <= 40.0f && (isRead || value == choice.value())));
    }
    CHECK(numRead > 1000);
}

TEST_CASE("Parameter text: names and whole numbers of a stepped parameter") {
    TestOwner owner;
    const std::vector<std::string> shared = {"< None >", "Slow", "SLOW"};
    constexpr std::int32_t table[] = {16, 4, 1};
    IndexedPluginParameter<bool> onOff(&owner, "Switch");
    IndexedPluginParameter<int> choice(&owner, "Choice", {1, 3, 1});
    IndexedPluginParameter<int> number(&owner, "Number", {-2, 9, 5});
    IndexedPluginParameter<int> tabled(&owner, "Tabled", {5, 7, 6});
    onOff.setNames("Off,On");
    choice.shareNames(&shared);
    tabled.setValueTable(table, 5);
    struct Row {
        AbstractPluginParameter* parameter;
        const char* typed;
        bool isRead;
        float value;
        const char* text;
    };
    const Row rows[] = {
        {&onOff, "on", true, 1.0f, "On"},       {&onOff, "1", true, 1.0f, "On"},
        {&onOff, "2", false, 0.0f, "Off"},      {&onOff, "O", false, 0.0f, "Off"},
        {&choice, "SLOW", true, 3.0f, "SLOW"},  {&choice, "slow", true, 2.0f, "Slow"},
        {&choice, "1", true, 1.0f, "< None >"}, {&number, " -2 ", true, -2.0f, "-2"},
        {&number, "3.5", false, 5.0f, "5"},     {&number, "99999999999", false, 5.0f, "5"},
        {&number, "3 4", false, 5.0f, "5"},     {&number, "", false, 5.0f, "5"},
        {&tabled, "16", true, 5.0f, "16"},      {&tabled, "5", false, 6.0f, "4"}};
    for (const Row& row : rows) {
        INFO(row.parameter->getName() << ", typed: " << std::string(row.typed));
        float value = -9.0f;
        CHECK(row.parameter->parseText(row.typed, value) == row.isRead);
        CHECK(value == row.value);
        CHECK(row.parameter->text(value) == row.text);
    }
    CHECK(onOff.shortText(0.0f, 2) == "Of");
    CHECK(!onOff.hasNumericText());
    CHECK(number.hasNumericText());
    CHECK(tabled.positionOf(1) == 7);
    CHECK(tabled.positionOf(3) == 5);
}

TEST_CASE("Units: are found by the word that they show, the first that shows it") {
    CHECK(units::find("dB") == &units::dB);
    CHECK(units::find("Hz") == &units::hz);
    CHECK(units::find(":1") == nullptr);
    CHECK(units::listed().size() == 7);
}

}  // namespace
}  // namespace cinder
