#pragma once

#include <string>

#include "params/AbstractParameterSetList.h"
#include "params/ParameterSetArray.h"

namespace cinder {

/// A list that owns its sets.
template <typename T>
class ParameterSetList : public AbstractParameterSetList {
public:
    /// `makeSet(i)` gives the set i, 0 to the maximum of `active`, as a std::unique_ptr<T>.
    template <typename MakeSet>
    ParameterSetList(GenericParameterOwner* owner, const std::string& listName, IndexRange active,
                     const MakeSet& makeSet)
        : AbstractParameterSetList(owner, listName, active), sets(active.maximum, makeSet) {}

    int setCount() const override { return sets.size(); }
    T* set(int index) const override { return sets.at(index); }

private:
    OwnedParameterSets<T> sets;
};

}  // namespace cinder
