#include "state/ValueList.h"

#include <algorithm>
#include <istream>

#include "state/BinaryData.h"

namespace cinder {

std::optional<ValueList> readValueList(std::istream& stream, std::size_t wanted) {
    ValueList list;
    readValue(stream, list.count);
    if (!isGood(stream) || list.count < 0) return {};
    list.values.resize(std::min(static_cast<std::size_t>(list.count), wanted));
    readValues(stream, list.values.data(), list.values.size());
    list.whole = isGood(stream);
    return list;
}

void skipValues(std::istream& stream, std::size_t count) {
    const auto length = static_cast<std::streamsize>(count * sizeof(float));
    if (length == 0 || !isGood(stream)) return;
    stream.ignore(length);
    if (stream.gcount() < length) stream.setstate(std::ios::failbit);
}

}  // namespace cinder
