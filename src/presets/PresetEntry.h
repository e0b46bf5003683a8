#pragma once

#include <cstdint>
#include <string>

namespace cinder {

/// A preset file, by its place.
struct PresetEntry {
    /// An entry for a file that need not be in any tree; named after the file, without number.
    static PresetEntry of(std::string path);

    std::string path;
    std::string name;          ///< of the file, without folder and extension
    std::string programLabel;  ///< "(bank/program) name", once it has been numbered
    std::int32_t bank = -1;    ///< MIDI bank; -1 where there is no number
    std::int32_t program = 0;  ///< MIDI program, 0 to 127
};

}  // namespace cinder
