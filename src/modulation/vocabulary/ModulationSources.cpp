#include "modulation/vocabulary/ModulationSources.h"

#include <algorithm>
#include <iterator>

namespace cinder {

const SourceRow& rowOfSource(int source) {
    const auto behind = std::find_if(std::begin(sourceRows) + 1, std::end(sourceRows),
                                     [=](const SourceRow& row) { return source < row.first; });
    return *std::prev(behind);
}

std::string nameOfSource(int source) {
    if (source < 0 || source >= numModulationSources) return {};
    const SourceRow& row = rowOfSource(source);
    const int namesEach = numNames(row.names), place = source - row.first;
    return numberedName(nameAt(row.names, place % namesEach), place / namesEach + 1);
}

SourceKind kindOfSource(int source) {
    return rowOfSource(source).kind;
}

TargetSpan ownTargetsOfSource(int source) {
    const SourceRow& row = rowOfSource(source);
    return {row.firstOwnTarget + (source - row.first) * row.numOwnTargets, row.numOwnTargets};
}

}  // namespace cinder
