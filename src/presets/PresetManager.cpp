#include "presets/PresetManager.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace cinder {
namespace {

constexpr std::int32_t programsPerBank = 128;

void appendPresets(const PresetFolder& folder, std::vector<PresetEntry*>& out) {
    for (const auto& subfolder : folder.getSubfolders())
        appendPresets(*subfolder, out);
    for (const auto& preset : folder.getPresets())
        out.push_back(preset.get());
}

std::string labelOf(const PresetEntry& entry) {
    return '(' + std::to_string(entry.bank) + '/' + std::to_string(entry.program) + ") " +
           entry.name;
}

}  // namespace

PresetManager::PresetManager(std::string path, std::string extension, TimerFactory makeTimer)
    : PresetFolder(std::move(path), std::move(extension), scanBudgetMs, std::move(makeTimer)) {}

void PresetManager::rescan(std::string path) {
    scan(std::move(path), scanBudgetMs);
    std::vector<PresetEntry*> list;
    allPresets(list);
    std::int32_t number = 0;
    for (PresetEntry* const entry : list) {
        entry->bank = number / programsPerBank;
        entry->program = number % programsPerBank;
        entry->programLabel = labelOf(*entry);
        ++number;
    }
}

void PresetManager::allPresets(std::vector<PresetEntry*>& out) const {
    out.clear();
    appendPresets(*this, out);
}

PresetEntry* PresetManager::findByName(std::string_view name) const {
    std::vector<PresetEntry*> list;
    allPresets(list);
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const PresetEntry* entry) { return entry->name == name; });
    return found == list.end() ? nullptr : *found;
}

PresetEntry* PresetManager::findAtRootFirst(std::string_view name) const {
    for (const auto& preset : getPresets())
        if (preset->name == name) return preset.get();
    return findByName(name);
}

PresetEntry* PresetManager::findProgram(std::int32_t bank, std::int32_t program) const {
    std::vector<PresetEntry*> list;
    allPresets(list);
    const std::int64_t index = std::int64_t{bank} * programsPerBank + program;
    if (index < 0 || index >= static_cast<std::int64_t>(list.size())) return nullptr;
    return list[static_cast<std::size_t>(index)];
}

PresetEntry* PresetManager::step(std::string_view path, int direction) const {
    if (direction != previousPreset && direction != nextPreset) return nullptr;
    std::vector<PresetEntry*> list;
    allPresets(list);
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const PresetEntry* entry) { return entry->path == path; });
    if (found == list.end()) return nullptr;
    const auto i = static_cast<std::size_t>(found - list.begin());
    const std::size_t away = direction == nextPreset ? 1 : list.size() - 1;
    return list[(i + away) % list.size()];
}

}  // namespace cinder
