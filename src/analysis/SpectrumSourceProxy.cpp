#include "analysis/SpectrumSourceProxy.h"

#include <cmath>
#include <cstddef>
#include <istream>

namespace cinder {

bool SpectrumSourceProxy::read(BinaryDataReader& reader) {
    std::istream& stream = reader.getStream();
    std::int32_t newHeader = 0, count = 0;
    readValue(stream, newHeader);
    readValue(stream, count);
    if (count < 0 || count > maxSize) stream.setstate(std::ios::failbit);
    if (!reader.isGood()) return false;

    incoming.resize(static_cast<std::size_t>(count));
    readValues(stream, incoming.data(), incoming.size());
    if (!reader.isGood()) return false;

    header = newHeader;
    if (consumed || incoming.size() != values.size()) {
        values.swap(incoming);
        consumed = false;
        return true;
    }
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = std::fmax(values[i], incoming[i]);
    return true;
}

void SpectrumSourceProxy::unlock() {
    if (--lockCount == 0) consumed = true;
}

}  // namespace cinder
