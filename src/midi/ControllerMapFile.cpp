#include "midi/ControllerMapFile.h"

#include <system_error>

#include "midi/ControllerMapping.h"
#include "state/BinaryFile.h"

namespace cinder {

bool readControllerMapFile(const std::filesystem::path& path, ControllerMapping& mapping) {
    BinaryFileReader reader(path);
    return mapping.read(reader);
}

bool writeControllerMapFile(const std::filesystem::path& path, const ControllerMapping& mapping) {
    std::error_code failed;  // if it matters, the writer finds the folder missing
    std::filesystem::create_directories(path.parent_path(), failed);
    BinaryFileWriter writer(path);
    return mapping.write(writer) && writer.commit();
}

}  // namespace cinder
