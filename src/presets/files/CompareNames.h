#pragma once

#include <string_view>

namespace cinder {

/// How names of files and folders are told apart and put in order: byte by byte, with A to Z as a
/// to z and every other byte as it is, so that the order is the same in every language. Of two
/// names that begin alike the shorter one is first.
/// Range   below 0: a is first; 0: they are the same name; above 0: b is first
int compareNames(std::string_view a, std::string_view b);

inline bool isSameNameInAnyCase(std::string_view a, std::string_view b) {
    return compareNames(a, b) == 0;
}

/// The name matches the pattern in any case (A to Z): `*` stands for any bytes, or none, and
/// nothing else stands for anything but itself.
bool matchesPattern(std::string_view name, std::string_view pattern);

}  // namespace cinder
