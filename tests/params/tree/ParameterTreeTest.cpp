#include "params/tree/StandaloneParameters.h"

#include "distortion/styles/StyleRecipes.h"
#include "modulation/matrix/ModulationTargetParameter.h"
#include "params/PropPluginParameter.h"

#include <doctest/doctest.h>

#include <fstream>
#include <set>
#include <sstream>

using namespace cinder;

namespace {

const ModulationTargetParameter* targetOf(const AbstractPluginParameter* parameter) {
    return dynamic_cast<const ModulationTargetParameter*>(parameter);
}

/// A line of the list of reference: what saved sounds, hosts and controllers rely on.
std::string lineOf(const StandaloneParameters& tree, int id) {
    const AbstractPluginParameter& parameter = *tree.parameter(id);
    std::ostringstream line;
    line << id << " | " << parameter.getName() << " | " << tree.groupName(parameter.getGroup())
         << " | " << parameter.text(parameter.minimum()) << " to "
         << parameter.text(parameter.maximum()) << " | "
         << parameter.text(parameter.defaultValue());
    if (const auto* const target = targetOf(&parameter))
        line << " | target " << target->getTarget();
    if (!parameter.automatable) line << " | not automatable";
    return line.str();
}

}  // namespace

TEST_CASE("CinderParameters: every id has the name, range and default that saved sounds rely on") {
    const StandaloneParameters tree;
    REQUIRE(tree.parameterCount() == 899);
    std::ifstream file(CINDER_PARAMETER_LIST);
    std::string expected;
    for (int id = 0; id < tree.parameterCount(); ++id) {
        REQUIRE(std::getline(file, expected));
        CHECK(lineOf(tree, id) == expected);
        CHECK(tree.parameter(id)->getId() == id);
        CHECK(tree.parameter(id)->value() == tree.parameter(id)->defaultValue());
    }
    CHECK_FALSE(std::getline(file, expected));
}

TEST_CASE("CinderParameters: each target is the base of one parameter, whose range it can take") {
    const StandaloneParameters tree;
    std::set<int> found;
    for (int id = 0; id < tree.parameterCount(); ++id) {
        const auto* const parameter = targetOf(tree.parameter(id));
        if (!parameter) continue;
        const int target = parameter->getTarget();
        INFO(parameter->getName() << ", " << nameOfTarget(target));
        CHECK(found.insert(target).second);
        const ModulationTargetRange& range = rangeOfTarget(target);
        const float tolerance = 1e-5f * (range.maximum - range.minimum);
        CHECK(parameter->targetValue(parameter->minimum()) > range.minimum - 0.01f);
        CHECK(parameter->targetValue(parameter->maximum()) < range.maximum + tolerance);
    }
    CHECK(found.size() == numModulationTargets);
}

TEST_CASE("CinderParameters: rows are found by their names") {
    StandaloneParameters tree;
    CHECK(tree[GlobalTargetParameter::OutputGain].getName() == "Output Gain");
    CHECK(tree[GlobalChoiceParameter::ReceiveMidi].getName() == "Receive Midi");
    CHECK(tree.getMidiStateParameter() == &tree[GlobalChoiceParameter::ReceiveMidi]);
    const auto& band = *tree.bands.set(1);
    CHECK(band[BandParameter::Drive].getName() == "Band 2 Drive");
    CHECK(band[BandParameter::CrossoverFrequency].getName() == "Band 2 Crossover Frequency");
    CHECK((*tree.bandExtensions.set(5))[BandExtensionParameter::State].getId() == 898);
    auto& xlfo = *tree.xlfos.set(5);
    CHECK(xlfo[XLFOParameter::Snap].getName() == "XLFO 6 Snap");
    CHECK((*xlfo.steps.set(15))[XLFOStepParameter::Random].getId() == 543);
    CHECK((*tree.egs.set(0))[EGParameter::Release].getName() == "EG 1 Release");
    CHECK((*tree.efs.set(3))[EFParameter::Input].getName() == "EF 4Input");
    CHECK((*tree.xyControllers.set(3))[XYParameter::Ver].getId() == 104);

    using Style = PropPluginParameter<int>;
    const auto& style = band.as<Style>(BandParameter::Style);
    for (const StyleRecipe& recipe : styleRecipes)
        CHECK(style.text(static_cast<float>(recipe.id)) == recipe.name);
    CHECK_THROWS_AS(band.as<Style>(BandParameter::Drive), std::bad_cast);
}

TEST_CASE("CinderParameters: a source is called by its input") {
    StandaloneParameters tree;
    const auto& source = *tree.midiSources.set(2);
    source[MidiSourceParameter::Input].setValue(2.0f, 0);
    CHECK(source.sourceLabel() == "Velocity (MS 3)");
    source[MidiSourceParameter::Input].setValue(5.0f, 0);
    source[MidiSourceParameter::ControllerNumber].setValue(74.0f, 0);
    CHECK(source.sourceLabel() == "74 (MS 3)");
}

TEST_CASE("CinderParameters: an XLFO moves with its steps, a band with its state") {
    StandaloneParameters tree;
    tree.xlfos.insertSet(0);
    const auto step = [&](int xlfo) -> AbstractPluginParameter& {
        return (*tree.xlfos.set(xlfo)->steps.set(3))[XLFOStepParameter::Value];
    };
    step(0).setValue(-0.25f, 0);
    tree.xlfos.set(0)->steps.numActive.setValue(7.0f, 0);
    tree.xlfos.insertSet(0);
    CHECK(step(1).value() == -0.25f);
    CHECK(tree.xlfos.set(1)->steps.activeCount() == 7);
    tree.xlfos.removeSet(0);
    CHECK(step(0).value() == -0.25f);
    CHECK(step(1).value() == 0.0f);
    CHECK(tree.xlfos.set(1)->steps.activeCount() == 2);

    const auto state = [&](int band) -> AbstractPluginParameter& {
        return (*tree.bandExtensions.set(band))[BandExtensionParameter::State];
    };
    tree.bands.insertSet(1);
    state(1).setValue(2.0f, 0);
    tree.bands.removeSet(0);
    CHECK(state(0).value() == 2.0f);
    CHECK(state(1).value() == 0.0f);
}

TEST_CASE("CinderParameters: High Quality decides about the latency") {
    StandaloneParameters tree;
    CHECK(tree.latency(44100.0) == 0);
    tree[GlobalChoiceParameter::HighQuality].setValue(1.0f, 0);
    const std::pair<double, int> rows[] = {{44100.0, 8},  {48001.0, 8},  {48002.0, 6}, {96001.0, 6},
                                           {192000.0, 4}, {192002.0, 0}, {384000.0, 0}};
    for (const auto& [rate, samples] : rows)
        CHECK(tree.latency(rate) == samples);
}
