#pragma once

#include <string_view>

namespace cinder {

/// The frequency in Hz of a note that is named at the front of a text, such as "A4", "c#3 25" or
/// "Bb": a letter from A to G, # or b, an octave (4 where none stands), and cents behind it.
///     Hz = 440 * 2^((12 * (octave + 1) + semitone + cents / 100 - 69) / 12)
/// False where no such letter stands first.
bool parseNoteName(std::string_view text, float& hz);

}  // namespace cinder
