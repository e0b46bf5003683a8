#pragma once

#include "presets/format/PresetText.h"

#include <filesystem>
#include <string>
#include <vector>

namespace cinder::test {

/// A preset in the form in which the tree keeps it.
struct PresetSource {
    std::string name;    // of the file, without its ending
    std::string folder;  // below the root, with slashes
    PresetText text;
    std::vector<float> values;  // of all parameters
};

/// All below a folder, sorted by path.
/// Errors  fails the test for a file that says what cannot be understood, or anything twice
std::vector<PresetSource> readPresetSources(const std::filesystem::path& root);

}  // namespace cinder::test
