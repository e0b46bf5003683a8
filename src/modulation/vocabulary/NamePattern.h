#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Names as the tables of this room hold them: lists with commas between, and `#` for a number.

namespace cinder {

constexpr int numNames(std::string_view list) {
    int count = list.empty() ? 0 : 1;
    for (const char c : list)
        count += c == ',' ? 1 : 0;
    return count;
}

/// The name at a place of the list, counted from 0; empty behind its end.
constexpr std::string_view nameAt(std::string_view list, int place) {
    for (; place > 0; --place) {
        const std::size_t comma = list.find(',');
        if (comma == std::string_view::npos) return {};
        list.remove_prefix(comma + 1);
    }
    return list.substr(0, list.find(','));
}

/// The pattern with `number` in place of its `#`.
std::string numberedName(std::string_view pattern, int number);

}  // namespace cinder
