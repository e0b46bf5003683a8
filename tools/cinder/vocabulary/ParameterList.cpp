#include "cinder/vocabulary/ParameterList.h"

#include "cinder/OptionValues.h"
#include "cinder/UsageError.h"
#include "modulation/matrix/ModulationTargetParameter.h"
#include "params/tree/StandaloneParameters.h"
#include "presets/format/ParameterText.h"

namespace cinder {

namespace {

std::string kindOf(const AbstractPluginParameter& parameter) {
    if (!parameter.isDiscrete()) return "continuous";
    return parameter.hasNumericText() ? "whole" : "choice";
}

std::string unitOf(const AbstractPluginParameter& parameter) {
    const auto* const continuous = dynamic_cast<const FloatPluginParameter*>(&parameter);
    return continuous ? continuous->display.label : std::string();
}

std::string targetOf(const AbstractPluginParameter& parameter) {
    const auto* const target = dynamic_cast<const ModulationTargetParameter*>(&parameter);
    return target ? std::to_string(target->getTarget()) : std::string();
}

}  // namespace

Listing parameterListing(const StandaloneParameters& tree) {
    Listing listing;
    listing.columns = {{"id", true},      {"name"},
                       {"group"},         {"kind"},
                       {"unit"},          {"minimum", true},
                       {"maximum", true}, {"default", true},
                       {"default text"},  {"normalised default", true},
                       {"target", true},  {"hint"}};
    for (int id = 0; id < tree.parameterCount(); ++id) {
        const AbstractPluginParameter& parameter = *tree.parameter(id);
        const float value = parameter.defaultValue();
        listing.rows.push_back(
            {std::to_string(id), parameter.getName(), tree.groupName(parameter.getGroup()),
             kindOf(parameter), unitOf(parameter), numberText(parameter.minimum()),
             numberText(parameter.maximum()), numberText(value), parameter.text(value),
             numberText(parameter.normalize(value)), targetOf(parameter), parameter.hint});
    }
    return listing;
}

AbstractPluginParameter& findParameter(const StandaloneParameters& tree, const std::string& name) {
    if (AbstractPluginParameter* const found = parameterNamed(tree, name)) return *found;
    throw UsageError(noSuchParameter(tree, name));
}

float valueOf(const AbstractPluginParameter& parameter, const std::string& text) {
    if (const auto value = valueOfText(parameter, text)) return *value;
    throw UsageError(noSuchValue(parameter, text));
}

}  // namespace cinder
