#include "presets/PresetEntry.h"

#include "presets/files/Paths.h"

#include <utility>

namespace cinder {

PresetEntry PresetEntry::of(std::string path) {
    PresetEntry entry;
    entry.name = removeExtension(lastPathComponent(path));
    entry.path = std::move(path);
    return entry;
}

}  // namespace cinder
