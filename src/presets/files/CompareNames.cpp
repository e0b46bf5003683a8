#include "presets/files/CompareNames.h"

#include <algorithm>
#include <cstddef>

namespace cinder {
namespace {

int folded(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 'A' && byte <= 'Z' ? byte - 'A' + 'a' : byte;
}

}  // namespace

int compareNames(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const int difference = folded(a[i]) - folded(b[i]);
        if (difference != 0) return difference;
    }
    return static_cast<int>(a.size() > common) - static_cast<int>(b.size() > common);
}

bool matchesPattern(std::string_view name, std::string_view pattern) {
    constexpr std::size_t none = std::string_view::npos;
    std::size_t at = 0, inPattern = 0, star = none, covered = 0;
    while (at < name.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == '*') {
            star = inPattern++;
            covered = at;
        } else if (inPattern < pattern.size() && folded(name[at]) == folded(pattern[inPattern])) {
            ++at;
            ++inPattern;
        } else if (star != none) {
            // The last star takes one byte more, and what follows it is tried again.
            inPattern = star + 1;
            at = ++covered;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == none;
}

}  // namespace cinder
