#include "presets/format/ComponentKind.h"

#include <algorithm>
#include <numeric>

#include "params/NumberText.h"

namespace cinder {

namespace {

// A band has one parameter more, its crossover frequency, and a state that stands elsewhere: to
// load a band must not move the crossover.
// clang-format off
constexpr ComponentKind kinds[] = {
    // extension folder  first set        sets values  ids of the first, step
    {".band", "Band", "Band 1",         6, 14,    6, 15},
    {".xlfo", "XLFO", "XLFO 1",         6, 73,  106, 73},
    {".eg",   "EG",   "EG 1",           6,  8,  545,  8},
    {".ef",   "EF",   "EF 1",           4,  3,  594,  3},
    {".midi", "MIDI", "MIDI Source 1", 10,  3,  607,  3},
};
// clang-format on

}  // namespace

std::vector<std::int32_t> ComponentKind::ids(std::int32_t index) const {
    std::vector<std::int32_t> ids(static_cast<std::size_t>(numValues));
    std::iota(ids.begin(), ids.end(), firstId + index * idStep);
    return ids;
}

std::span<const ComponentKind> componentKinds() {
    return kinds;
}

const ComponentKind* componentKindOf(std::string_view extension) {
    const auto* const found = std::ranges::find_if(kinds, [=](const ComponentKind& kind) {
        return equalsIgnoringCase(kind.extension, extension);
    });
    return found == std::end(kinds) ? nullptr : found;
}

}  // namespace cinder
