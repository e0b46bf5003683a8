#include "plugin/history/StateList.h"

#include <algorithm>

#include "params/AbstractPluginParameter.h"
#include "params/GenericParameterOwner.h"

namespace cinder {

void StateList::store(int index, const std::string& description) {
    const GenericParameterOwner& owner = subject.historyParameters();
    State& state = states[static_cast<std::size_t>(index)];
    state.description = description;
    state.preset = subject.getCurrentPreset().identity();
    state.compareSlot = subject.compareSlot();
    state.values.resize(static_cast<std::size_t>(owner.parameterCount()));
    for (int id = 0; id < owner.parameterCount(); ++id)
        state.values[static_cast<std::size_t>(id)] = owner.parameter(id)->value();
}

void StateList::restore(int index) {
    GenericParameterOwner& owner = subject.historyParameters();
    const State& state = states[static_cast<std::size_t>(index)];
    const int count = std::min(static_cast<int>(state.values.size()), owner.parameterCount());
    owner.beginUpdate();
    for (int id = 0; id < count; ++id)
        owner.parameter(id)->setValue(state.values[static_cast<std::size_t>(id)], 0);
    owner.requestHostRefresh();
    owner.endUpdate();

    CurrentPreset& preset = subject.getCurrentPreset();
    const bool fileChanged = preset.path() != state.preset.path;
    preset.assign(state.preset);
    subject.stateRestored(fileChanged);
}

}  // namespace cinder
