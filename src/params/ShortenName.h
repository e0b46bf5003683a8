#pragma once

#include <string>
#include <string_view>

namespace cinder {

/// A name in at most `maxChars` bytes that is still to be recognised, with as little taken away as
/// will do: usual abbreviations, then initials for all words but the last ("B2OFreq"), then the
/// last word without its vowels, then a cut. 0: the whole name.
std::string shortenName(std::string_view name, int maxChars);
/// A text cut to `maxBytes`, and never within a character.
std::string_view cutText(std::string_view text, int maxBytes);

}  // namespace cinder
