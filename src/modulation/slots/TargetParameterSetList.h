#pragma once

#include <string>

#include "modulation/slots/ListRouting.h"
#include "params/ParameterSetList.h"

namespace cinder {

/// A list whose sets own modulation targets, the same number each. Slots aimed at a set go with it
/// when it is removed, and follow it when another is removed or inserted before it; nothing is
/// aimed at a new set.
template <typename T>
class TargetParameterSetList : public ParameterSetList<T> {
public:
    /// `makeSet(i)` gives the set i as a std::unique_ptr<T>.
    template <typename MakeSet>
    TargetParameterSetList(GenericParameterOwner* owner, const std::string& listName,
                           IndexRange active, ModulationMatrixOwner* matrixOwner, SetSpan targets,
                           const MakeSet& makeSet)
        : TargetParameterSetList(owner, listName, active, matrixOwner, targets, SetSpan(),
                                 makeSet) {}

    void removeSet(int index) override {
        if (!ListRouting::isRemovable(*this, index)) return;
        this->owner->beginUpdate();
        const int place = routing.release(index);
        if (place >= 0) {
            const int count = this->activeCount();
            ParameterSetList<T>::removeSet(place);
            routing.setRemoved(place, count);
        }
        this->owner->endUpdate();
    }

    void insertSet(int index) override {
        const int count = this->activeCount();
        this->owner->beginUpdate();
        ParameterSetList<T>::insertSet(index);
        if (this->activeCount() > count) routing.setInserted(index, count);
        this->owner->endUpdate();
    }

protected:
    template <typename MakeSet>
    TargetParameterSetList(GenericParameterOwner* owner, const std::string& listName,
                           IndexRange active, ModulationMatrixOwner* matrixOwner, SetSpan targets,
                           SetSpan sources, const MakeSet& makeSet)
        : ParameterSetList<T>(owner, listName, active, makeSet),
          routing(matrixOwner, targets, sources) {}

private:
    ListRouting routing;
};

}  // namespace cinder
