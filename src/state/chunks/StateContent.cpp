#include "state/chunks/StateContent.h"

#include <istream>
#include <utility>

#include "state/BinaryData.h"
#include "state/ValueList.h"
#include "state/chunks/StateSections.h"

namespace cinder {

std::optional<StateContent> readStateContent(std::istream& stream, std::string_view productCode,
                                             std::size_t maxValues) {
    if (BinaryDataReader(stream).readHeader() != parameterStateMagic) return {};
    auto list = readValueList(stream, maxValues);
    if (!list) return {};
    skipValues(stream, static_cast<std::size_t>(list->count) - list->values.size());
    // A stream that ended within the values has failed, and so finds no instance.
    auto instance = readInstanceState(stream, productCode);
    if (!instance) return {};
    return StateContent{std::move(list->values), std::move(*instance), readBypassState(stream)};
}

}  // namespace cinder
