#include "params/AbstractParameterSetList.h"

#include <algorithm>

namespace cinder {

void AbstractParameterSetList::NumActiveParameter::applyValue(float value) noexcept
    CINDER_REALTIME {
    PropPluginParameter<int>::applyValue(value);
    const int active = targetValue(value);
    for (const std::vector<wave::Producer*>& ofSets : list->producers) {
        int index = 0;
        for (wave::Producer* producer : ofSets) {
            const bool runs = index++ < active;
            if (producer) producer->setActive(runs);
        }
    }
}

void AbstractParameterSetList::collectParameters(
    std::vector<AbstractPluginParameter*>& parameters) {
    parameters.push_back(&numActive);
    AbstractParameterSetArray::collectParameters(parameters);
}

bool AbstractParameterSetList::containsId(int id) const {
    return AbstractParameterSetArray::containsId(id) ||
           std::any_of(extensions.begin(), extensions.end(),
                       [id](const AbstractParameterSetArray* extension) {
                           return extension->containsId(id);
                       });
}

void AbstractParameterSetList::resetToDefaults() {
    AbstractParameterSetArray::resetToDefaults();
    for (AbstractParameterSetArray* extension : extensions)
        extension->resetToDefaults();
}

void AbstractParameterSetList::copyWithExtensions(int from, int to) {
    copySet(from, to);
    for (AbstractParameterSetArray* extension : extensions)
        extension->copySet(from, to);
}

void AbstractParameterSetList::insertSet(int index) {
    const int count = activeCount();
    if (index < 0 || index > count || count >= setCount()) return;
    owner->beginUpdate();
    numActive.setValue(static_cast<float>(count + 1), 0);
    for (int i = count; i >= std::max(index, 1); --i)
        copyWithExtensions(i - 1, i);
    owner->endUpdate();
}

void AbstractParameterSetList::removeSet(int index) {
    const int count = activeCount();
    if (index < 0 || index >= count || count <= static_cast<int>(numActive.minimum())) return;
    owner->beginUpdate();
    numActive.setValue(static_cast<float>(count - 1), 0);
    for (int i = index; i <= count - 2; ++i)
        copyWithExtensions(i + 1, i);
    resetSet(count - 1);
    for (AbstractParameterSetArray* extension : extensions)
        extension->resetSet(count - 1);
    owner->endUpdate();
}

}  // namespace cinder
