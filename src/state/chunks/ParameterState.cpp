#include "state/chunks/ParameterState.h"

#include <istream>
#include <ostream>
#include <vector>

#include "params/AbstractPluginParameter.h"
#include "state/BinaryData.h"
#include "state/ValueList.h"
#include "state/chunks/StateSections.h"

namespace cinder {

bool writeParameterState(std::ostream& stream, const GenericParameterOwner& owner) {
    BinaryDataWriter(stream).writeHeader(parameterStateMagic, stateVersion);
    const int count = owner.parameterCount();
    std::vector<float> values;
    values.reserve(static_cast<std::size_t>(count));
    for (int id = 0; id < count; ++id)
        values.push_back(owner.parameter(id)->value());
    writeValue(stream, std::int32_t{count});
    writeValues(stream, values.data(), values.size());
    return isGood(stream);
}

ParameterStateResult readParameterState(std::istream& stream, GenericParameterOwner& owner) {
    if (BinaryDataReader(stream).readHeader() != parameterStateMagic) return {};
    const int have = owner.parameterCount();
    const auto list = readValueList(stream, static_cast<std::size_t>(have));
    if (!list) return {};
    skipValues(stream, static_cast<std::size_t>(list->count) - list->values.size());

    constexpr unsigned flags = AbstractPluginParameter::hostKnows;
    const int numRead = static_cast<int>(list->values.size());
    owner.beginUpdate();
    for (int id = 0; id < numRead; ++id)
        owner.parameter(id)->setValue(list->values[static_cast<std::size_t>(id)], flags);
    for (int id = numRead; id < have; ++id)
        owner.parameter(id)->resetToDefault(flags);
    owner.requestHostRefresh();
    owner.endUpdate();
    return {.applied = true, .good = isGood(stream)};
}

}  // namespace cinder
