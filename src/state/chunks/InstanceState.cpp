#include "state/chunks/InstanceState.h"

#include <istream>
#include <ostream>

#include "state/BinaryData.h"
#include "state/chunks/StateSections.h"

namespace cinder {

bool writeInstanceState(std::ostream& stream, std::string_view productCode,
                        const InstanceState& state) {
    BinaryDataWriter writer(stream);
    writer.writeHeader(productCode, stateVersion);
    writer.writeString(state.presetName);
    writeValue(stream, state.instanceNumber);
    writeValue(stream, std::int32_t{state.autoInstanceName});
    writer.writeString(state.instanceName);
    return writer.isGood();
}

std::optional<InstanceState> readInstanceState(std::istream& stream, std::string_view productCode) {
    BinaryDataReader reader(stream);
    if (reader.readHeader() != productCode) return {};
    InstanceState state;
    std::int32_t autoInstanceName = 0;
    state.presetName = reader.readString();
    readValue(stream, state.instanceNumber);
    readValue(stream, autoInstanceName);
    state.autoInstanceName = autoInstanceName != 0;
    state.instanceName = reader.readString();
    if (!reader.isGood()) return {};
    return state;
}

bool writeBypassState(std::ostream& stream, bool isBypassed) {
    BinaryDataWriter(stream).writeHeader(bypassStateMagic, stateVersion);
    writeValue(stream, std::int32_t{isBypassed});
    return isGood(stream);
}

std::optional<bool> readBypassState(std::istream& stream) {
    if (BinaryDataReader(stream).readHeader() != bypassStateMagic) return {};
    std::int32_t isBypassed = 0;
    readValue(stream, isBypassed);
    if (!isGood(stream)) return {};
    return isBypassed != 0;
}

}  // namespace cinder
