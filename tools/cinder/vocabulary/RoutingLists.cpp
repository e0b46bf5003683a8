#include "cinder/vocabulary/RoutingLists.h"

#include "cinder/OptionValues.h"
#include "modulation/matrix/ModulationTargetParameter.h"
#include "params/tree/StandaloneParameters.h"

namespace cinder {

namespace {

std::string ownTargetsText(int source) {
    const TargetSpan own = ownTargetsOfSource(source);
    if (own.count == 0) return {};
    return std::to_string(own.first) + " to " + std::to_string(own.first + own.count - 1);
}

/// The name of the parameter that is a target's base, by target.
std::vector<std::string> baseNames(const StandaloneParameters& tree) {
    std::vector<std::string> names(numModulationTargets);
    for (int id = 0; id < tree.parameterCount(); ++id) {
        const auto* const base = dynamic_cast<ModulationTargetParameter*>(tree.parameter(id));
        if (base) names[static_cast<std::size_t>(base->getTarget())] = base->getName();
    }
    return names;
}

}  // namespace

Listing sourceListing() {
    Listing listing;
    listing.columns = {{"source", true}, {"name"}, {"kind", true}, {"own targets"}};
    for (int source = 0; source < numModulationSources; ++source)
        listing.rows.push_back({std::to_string(source), nameOfSource(source),
                                std::to_string(static_cast<int>(kindOfSource(source))),
                                ownTargetsText(source)});
    return listing;
}

Listing targetListing(const StandaloneParameters& tree) {
    Listing listing;
    listing.columns = {{"target", true},
                       {"name"},
                       {"parameter"},
                       {"range"},
                       {"minimum", true},
                       {"maximum", true},
                       {"depth", true},
                       {"depth of an EF", true},
                       {"depth of a snapped XLFO", true},
                       {"notes"}};
    const std::vector<std::string> bases = baseNames(tree);
    for (int target = 0; target < numModulationTargets; ++target) {
        const ModulationTargetRange& range = rangeOfTarget(target);
        listing.rows.push_back(
            {std::to_string(target), nameOfTarget(target), bases[static_cast<std::size_t>(target)],
             range.name, numberText(range.minimum), numberText(range.maximum),
             numberText(range.defaultDepth), numberText(range.followerDepth),
             numberText(range.snappedDepth), range.usesSecondVariant ? "at once" : "ramped"});
    }
    return listing;
}

}  // namespace cinder
