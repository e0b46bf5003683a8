#include "cinder/vocabulary/ParameterList.h"

#include "cinder/OptionValues.h"
#include "cinder/UsageError.h"
#include "modulation/matrix/ModulationTargetParameter.h"
#include "params/tree/StandaloneParameters.h"

#include <algorithm>

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

/// Those whose names have this one in them, at most a handful.
std::string alikeNames(const StandaloneParameters& tree, const std::string& name) {
    constexpr int enough = 5;
    int found = 0;
    std::string names;
    if (name.empty()) return names;
    for (int id = 0; id < tree.parameterCount() && found < enough; ++id) {
        const std::string& candidate = tree.parameter(id)->getName();
        const auto same = [](char a, char b) { return isSameName({&a, 1}, {&b, 1}); };
        if (std::search(candidate.begin(), candidate.end(), name.begin(), name.end(), same) ==
            candidate.end())
            continue;
        names += (found++ == 0 ? "" : ", ") + candidate;
    }
    return names;
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

AbstractPluginParameter* parameterNamed(const StandaloneParameters& tree, const std::string& name) {
    for (int id = 0; id < tree.parameterCount(); ++id)
        if (isSameName(tree.parameter(id)->getName(), name) || std::to_string(id) == name)
            return tree.parameter(id);
    return nullptr;
}

AbstractPluginParameter& findParameter(const StandaloneParameters& tree, const std::string& name) {
    if (AbstractPluginParameter* const found = parameterNamed(tree, name)) return *found;
    const std::string alike = alikeNames(tree, name);
    throw UsageError(
        "there is no parameter \"" + name + "\"; " +
        (alike.empty() ? "`cinder params` lists them" : "did you mean " + alike + "?"));
}

float valueOf(const AbstractPluginParameter& parameter, const std::string& text) {
    float value = 0.0f;
    if (!parameter.parseText(text, value))
        throw UsageError("\"" + text + "\" is no value of " + parameter.getName() +
                         "; its default reads \"" + parameter.text(parameter.defaultValue()) +
                         "\"");
    // A note may lie out of range; what is stored does not.
    return std::clamp(value, parameter.minimum(), parameter.maximum());
}

}  // namespace cinder
