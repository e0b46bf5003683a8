#pragma once

#include <cstddef>
#include <string_view>

namespace cinder {

/// The length in bytes of the character in front of `text`, which isn't empty; 0 where its first
/// bytes are none: cut short, longer than it need be, half a surrogate pair, past the last one.
std::size_t utf8Length(std::string_view text);

}  // namespace cinder
