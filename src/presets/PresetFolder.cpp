#include "presets/PresetFolder.h"

#include "presets/files/CompareNames.h"
#include "presets/files/FileEnumerator.h"
#include "presets/files/Paths.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>
#include <utility>

namespace cinder {
namespace {

/// Takes "_", digits and blanks off the front of the name, and answers with the digits' number.
std::int32_t takeOrder(std::string& name) {
    if (!name.starts_with('_')) return PresetFolder::unnumberedOrder;
    constexpr std::uint32_t largest{std::numeric_limits<std::int32_t>::max()};
    std::uint32_t number = 0;  // without a sign, so that a dash is no part of it
    const auto [end, error] = std::from_chars(name.data() + 1, name.data() + name.size(), number);
    if (error == std::errc::result_out_of_range) number = largest;
    const auto behind = static_cast<std::size_t>(end - name.data());
    name.erase(0, std::min(name.find_first_not_of(" \t\n\v\f\r", behind), name.size()));
    return static_cast<std::int32_t>(std::min(number, largest));
}

/// What is left of the budget; also where the timer has gone past it.
std::int32_t rest(std::int32_t budgetMs, const IntervalTimer& timer) {
    const std::int64_t left = std::int64_t{budgetMs} - timer.elapsed();
    return static_cast<std::int32_t>(std::max(left, std::int64_t{0}));
}

bool isBefore(const std::string& nameA, const std::string& pathA, const std::string& nameB,
              const std::string& pathB) {
    const int order = compareNames(nameA, nameB);
    return order != 0 ? order < 0 : pathA < pathB;
}

}  // namespace

PresetFolder::PresetFolder(std::string path, std::string extension, std::int32_t budgetMs,
                           TimerFactory makeTimer)
    : extension(std::move(extension)), makeTimer(std::move(makeTimer)) {
    scan(std::move(path), budgetMs);
}

void PresetFolder::scan(std::string newPath, std::int32_t budgetMs) {
    const auto timer = makeTimer();
    subfolders.clear();
    presets.clear();
    cutShort = false;
    path = withTrailingBackslash(std::move(newPath));
    name = lastPathComponent(withoutTrailingBackslash(path));
    order = takeOrder(name);
    if (path.empty()) return;
    if (budgetMs < 1) {
        cutShort = true;
        return;
    }
    scanPresets(*timer, budgetMs);
    scanSubfolders(*timer, budgetMs);
}

void PresetFolder::scanPresets(const IntervalTimer& timer, std::int32_t budgetMs) {
    const auto files = FileEnumerator::create(path + '*' + extension, false);
    std::string fileName;
    while (files->next()) {
        files->name(fileName);
        if (fileName.starts_with('.')) continue;
        cutShort = rest(budgetMs, timer) == 0;
        if (cutShort) break;
        presets.push_back(std::make_unique<PresetEntry>(PresetEntry::of(path + fileName)));
    }
    std::sort(presets.begin(), presets.end(), [](const auto& a, const auto& b) {
        return isBefore(a->name, a->path, b->name, b->path);
    });
}

void PresetFolder::scanSubfolders(const IntervalTimer& timer, std::int32_t budgetMs) {
    const auto folders = FileEnumerator::create(path + '*', true);
    std::string folderName;
    while (folders->next()) {
        folders->name(folderName);
        if (folderName.starts_with('.') || isCircularLink(path + folderName)) continue;
        subfolders.push_back(
            std::make_unique<PresetFolder>(path + folderName, extension, 0, makeTimer));
    }
    std::sort(subfolders.begin(), subfolders.end(), [](const auto& a, const auto& b) {
        return a->order != b->order ? a->order < b->order
                                    : isBefore(a->name, a->path, b->name, b->path);
    });
    for (const auto& subfolder : subfolders) {
        subfolder->scan(subfolder->path, rest(budgetMs, timer));
        cutShort |= subfolder->cutShort;
    }
}

bool PresetFolder::contains(std::string_view presetPath) const {
    return !path.empty() && presetPath.starts_with(path);
}

}  // namespace cinder
