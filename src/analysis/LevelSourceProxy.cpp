#include "analysis/LevelSourceProxy.h"

namespace cinder {

bool LevelSourceProxy::read(BinaryDataReader& reader) {
    std::array<float, numValues> newValues{};
    std::uint32_t newStatus = 0;
    readValues(reader.getStream(), newValues.data(), newValues.size());
    readValue(reader.getStream(), newStatus);
    if (!reader.isGood()) return false;
    values = newValues;
    status = newStatus;
    return true;
}

float LevelSourceProxy::getValue(std::int32_t index) const {
    return index >= 0 && index < numValues ? values[static_cast<std::size_t>(index)] : 0.0f;
}

}  // namespace cinder
