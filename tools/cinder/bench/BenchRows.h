#pragma once

#include <string>
#include <vector>

namespace cinder {

/// One state of the product whose cost is of interest.
struct BenchRow {
    /// What a user sets, as parameter and text.
    struct Setting {
        std::string parameter, text;
    };
    enum class Signal { Music, Silence };

    std::string group, name;
    std::vector<Setting> settings;
    Signal signal = Signal::Music;
    bool bypassed = false;
};

/// All rows, in the order in which they are printed. Names differ.
std::vector<BenchRow> benchRows();

}  // namespace cinder
