#include "params/AbstractParameterSetArray.h"

#include "params/AbstractPluginParameter.h"

namespace cinder {

void AbstractParameterSetArray::collectParameters(
    std::vector<AbstractPluginParameter*>& parameters) {
    for (int i = 0; i < setCount(); ++i)
        for (int k = 0; k < set(i)->parameterCount(); ++k)
            parameters.push_back(set(i)->parameter(k));
}

bool AbstractParameterSetArray::containsId(int id) const {
    const int first = firstId();
    if (id == -1 || first == -1) return first != -1 && id == -1;
    return id >= first && id <= lastId();
}

int AbstractParameterSetArray::firstId() const {
    const PluginParameterSet* const first = set(0);
    return first && first->parameterCount() > 0 ? first->parameter(0)->getId() : -1;
}

int AbstractParameterSetArray::lastId() const {
    const PluginParameterSet* const last = set(setCount() - 1);
    return last && last->parameterCount() > 0 ? last->parameter(last->parameterCount() - 1)->getId()
                                              : firstId();
}

void AbstractParameterSetArray::resetToDefaults() {
    for (int i = 0; i < setCount(); ++i)
        resetSet(i);
}

void AbstractParameterSetArray::copySet(int from, int to) {
    if (set(from) && set(to)) set(to)->copyFrom(*set(from));
}

void AbstractParameterSetArray::resetSet(int index) {
    if (set(index)) set(index)->resetToDefaults();
}

}  // namespace cinder
