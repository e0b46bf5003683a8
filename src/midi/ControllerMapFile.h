#pragma once

#include <filesystem>
#include <string_view>

namespace cinder {

class ControllerMapping;

/// Where a controller map stands, in the folder of the product's application data.
constexpr std::string_view controllerMapFileName = "MidiControllerMap.knm";

/// Errors  false, and the map is as it was: no file, or none that holds a whole map. [ui]
bool readControllerMapFile(const std::filesystem::path& path, ControllerMapping& mapping);

/// Makes the folder where it is missing. A file that is there has its first 520 bytes replaced.
/// Errors  false, and the file is as it was. [ui]
bool writeControllerMapFile(const std::filesystem::path& path, const ControllerMapping& mapping);

}  // namespace cinder
