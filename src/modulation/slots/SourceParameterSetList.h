#pragma once

#include "modulation/slots/TargetParameterSetList.h"

namespace cinder {

/// A list whose sets are modulation sources, the same number each, and may own targets as well.
/// Slots that start from a set go with it when it is removed, and follow it when another is removed
/// or inserted before it.
template <typename T>
class SourceParameterSetList : public TargetParameterSetList<T> {
public:
    /// `makeSet(i)` gives the set i as a std::unique_ptr<T>.
    template <typename MakeSet>
    SourceParameterSetList(GenericParameterOwner* owner, const std::string& listName,
                           IndexRange active, ModulationMatrixOwner* matrixOwner, SetSpan targets,
                           SetSpan sources, const MakeSet& makeSet)
        : TargetParameterSetList<T>(owner, listName, active, matrixOwner, targets, sources,
                                    makeSet) {}
};

}  // namespace cinder
