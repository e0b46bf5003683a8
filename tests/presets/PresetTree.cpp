#include "presets/PresetTree.h"

#include <filesystem>

#include "presets/files/Paths.h"

namespace cinder::test {

void PresetTree::add(const std::vector<std::string>& names) const {
    for (const std::string& name : names) {
        const std::filesystem::path path = folder / name;
        std::filesystem::create_directories(path.parent_path());
        if (!name.ends_with('/')) putBytes(path, "");
    }
}

std::string PresetTree::root() const {
    return withTrailingBackslash(systemPath(folder.path));
}

PresetFolder::TimerFactory noTime() {
    static std::uint32_t stopped = 0;
    return SlowTimer::factory(stopped, 0);
}

std::vector<std::string> namesOf(const PresetManager& manager) {
    std::vector<PresetEntry*> list;
    manager.allPresets(list);
    std::vector<std::string> names;
    for (const PresetEntry* const entry : list)
        names.push_back(entry->name);
    return names;
}

std::size_t numFoldersIn(const PresetFolder& folder) {
    std::size_t count = 1;
    for (const auto& subfolder : folder.getSubfolders())
        count += numFoldersIn(*subfolder);
    return count;
}

}  // namespace cinder::test
