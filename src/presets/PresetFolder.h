#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/IntervalTimer.h"
#include "presets/PresetEntry.h"

namespace cinder {

/// A folder of presets with all folders below it, in the order in which a person sees them:
/// folders by their order number and then by name, presets by name, all by compareNames(), and
/// what compares equal by the bytes of its path.
///
/// A folder whose name begins with "_" has as its order the number behind that, or 0 where there
/// is none, and is shown without both: "_10 Drums" is "Drums". All others have the order 10000.
/// What is hidden, a name that begins with a dot, is no part of the tree.
///
/// Range   budgetMs bounds the time for which a scan holds up its thread. When it is up, presets
///         and folders found so far stay, and folders that are still to be listed are empty. A
///         folder lists its own presets before it goes into other folders, and into these in
///         their order, so that what is high up in the tree or first in it is found first
/// State   as the disk was when it was scanned. A scan replaces every folder and entry below: no
///         pointer into the tree stays valid across it. [ui] or under the instance lock
/// Errors  none: a folder that can't be read is empty. A link to a folder that it lies in itself
///         is left out, and so circles end; other links can make a folder turn up more than once,
///         and even then the depth is bounded by the length of a path and the time by the budget
class PresetFolder {
public:
    using TimerFactory = std::function<std::unique_ptr<IntervalTimer>()>;

    static constexpr std::int32_t unnumberedOrder = 10000;

    PresetFolder(std::string path, std::string extension, std::int32_t budgetMs,
                 TimerFactory makeTimer = &IntervalTimer::create);
    PresetFolder(const PresetFolder&) = delete;
    PresetFolder& operator=(const PresetFolder&) = delete;
    virtual ~PresetFolder() = default;

    /// An empty path is an empty folder.
    void scan(std::string path, std::int32_t budgetMs);

    /// The preset's file is somewhere below this folder.
    bool contains(std::string_view presetPath) const;
    /// The last scan ran out of time, here or below: there may be more than was found.
    bool isCutShort() const { return cutShort; }
    bool isEmpty() const { return subfolders.empty() && presets.empty(); }

    const std::string& getPath() const { return path; }  ///< with its backslash at the end
    const std::string& getName() const { return name; }  ///< as it is shown
    const std::string& getExtension() const { return extension; }  ///< with its dot
    std::int32_t getOrder() const { return order; }
    const std::vector<std::unique_ptr<PresetFolder>>& getSubfolders() const { return subfolders; }
    const std::vector<std::unique_ptr<PresetEntry>>& getPresets() const { return presets; }

private:
    void scanPresets(const IntervalTimer& timer, std::int32_t budgetMs);
    void scanSubfolders(const IntervalTimer& timer, std::int32_t budgetMs);

    std::vector<std::unique_ptr<PresetFolder>> subfolders;
    std::string name;
    std::string extension;
    std::vector<std::unique_ptr<PresetEntry>> presets;
    std::int32_t order = unnumberedOrder;
    std::string path;
    bool cutShort = false;
    TimerFactory makeTimer;
};

}  // namespace cinder
