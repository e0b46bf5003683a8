// Makes the data files that are built into the product. Runs while building.
#include "core/platform/WholeFile.h"
#include "pack/PackSources.h"
#include "presets/format/PresetContent.h"

#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string_view>

namespace {

constexpr const char* usage = R"(Usage:
  cinder-pack archive SOURCES FILE    the factory archive from SOURCES/factory and
                                      SOURCES/components
  cinder-pack maps FOLDER             the maps of old presets, one file a version
)";

void write(const std::filesystem::path& path, std::string_view bytes) {
    if (!cinder::platform::writeWholeFile(path, bytes))
        throw std::runtime_error(path.string() + ": can't be written");
}

void writeMaps(const std::filesystem::path& folder) {
    for (int version = 1; version < cinder::presetVersion; ++version)
        write(folder / cinder::presetMapFileName(version), cinder::packPresetMap(version));
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view task = argc > 1 ? argv[1] : "";
    try {
        if (task == "archive" && argc == 4) {
            write(argv[3], cinder::packPresetSources(argv[2]));
        } else if (task == "maps" && argc == 3) {
            writeMaps(argv[2]);
        } else {
            std::cerr << usage;
            return 2;
        }
    } catch (const std::exception& error) {
        std::cerr << "cinder-pack: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
