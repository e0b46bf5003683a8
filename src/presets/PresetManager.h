#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "presets/PresetFolder.h"

namespace cinder {

/// The presets of one kind: a tree on the disk, and as a list in a fixed order, which is that of
/// program numbers and of the arrows. A folder's place in the list: first all its folders, each
/// with its own folders first, then its own presets; so the presets at the root come last.
///
/// State   all answers follow the last scan. Pointers are valid until the next one
class PresetManager final : public PresetFolder {
public:
    static constexpr std::int32_t scanBudgetMs = 2500;
    static constexpr int previousPreset = 0;
    static constexpr int nextPreset = 2;

    PresetManager(std::string path, std::string extension,
                  TimerFactory makeTimer = &IntervalTimer::create);

    /// The tree as it is on the disk now, and a number and a label for each entry: entry i of the
    /// list is program i mod 128 of bank i div 128, and its label is "(bank/program) name".
    void rescan(std::string path);

    void allPresets(std::vector<PresetEntry*>& out) const;
    /// The first of the list with exactly this name, or null.
    PresetEntry* findByName(std::string_view name) const;
    /// The same, but one at the root goes before all others.
    PresetEntry* findAtRootFirst(std::string_view name) const;
    /// The entry that a MIDI program change stands for; null past the end.
    PresetEntry* findProgram(std::int32_t bank, std::int32_t program) const;
    /// The neighbour of the entry with exactly this path, past the ends the one at the other end.
    /// Null where the tree has no such entry.
    PresetEntry* step(std::string_view path, int direction) const;
};

}  // namespace cinder
