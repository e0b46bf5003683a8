#include "plugin/history/CurrentPreset.h"

#include <utility>

namespace cinder {

std::string CurrentPreset::name() const {
    const ScopedLock inside(*section);
    return currentName;
}

std::string CurrentPreset::path() const {
    const ScopedLock inside(*section);
    return currentPath;
}

PresetIdentity CurrentPreset::identity() const {
    const ScopedLock inside(*section);
    return {currentName, currentPath, modified};
}

void CurrentPreset::assign(const PresetIdentity& identity) {
    const ScopedLock inside(*section);
    currentName = identity.name;
    currentPath = identity.path;
    modified = identity.isModified;
}

void CurrentPreset::setFile(std::string newName, std::string newPath) {
    const ScopedLock inside(*section);
    currentName = std::move(newName);
    currentPath = std::move(newPath);
}

}  // namespace cinder
