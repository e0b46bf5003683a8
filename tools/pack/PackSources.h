#pragma once

#include <filesystem>
#include <string>

namespace cinder {

/// The factory archive from the texts of presets:
///
///     factory/FOLDER/NAME.txt       FactoryPresets/FOLDER/NAME.knp
///     components/KIND/NAME.txt      ApplicationData/Component Presets/KIND/NAME with KIND's ending
///
/// Shape   the same bytes for the same texts; names that begin with a dot are passed over
/// Errors  std::runtime_error, with the file and line, for the first text that can't be packed
std::string packPresetSources(const std::filesystem::path& sources);

/// The file that says where the values of presets of an old version have gone, versions 1 to 3.
std::string packPresetMap(int version);
std::string presetMapFileName(int version);

}  // namespace cinder
