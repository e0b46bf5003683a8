#include "modulation/vocabulary/ModulationTargets.h"

#include <algorithm>
#include <iterator>

namespace cinder {

namespace {

const TargetGroup& groupOfTarget(int target) {
    const auto behind =
        std::find_if(std::begin(targetGroups) + 1, std::end(targetGroups),
                     [=](const TargetGroup& group) { return target < group.first; });
    return *std::prev(behind);
}

const TargetRow& rowOfTarget(const TargetGroup& group, int target) {
    return group.targets[static_cast<std::size_t>(target - group.first) % group.targets.size()];
}

}  // namespace

std::string nameOfTarget(int target) {
    if (target < 0 || target >= numModulationTargets) return {};
    const TargetGroup& group = groupOfTarget(target);
    const int member = (target - group.first) / static_cast<int>(group.targets.size());
    std::string name = numberedName(group.name, member + 1);
    if (!name.empty()) name += ' ';
    return name + rowOfTarget(group, target).name;
}

const ModulationTargetRange& rangeOfTarget(int target) {
    return rangeRecord(rowOfTarget(groupOfTarget(target), target).range);
}

}  // namespace cinder
