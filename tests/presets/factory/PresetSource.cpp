#include "presets/factory/PresetSource.h"

#include "params/tree/StandaloneParameters.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>

namespace cinder::test {

namespace {

PresetSource read(const std::filesystem::path& root, const std::filesystem::path& file) {
    static const StandaloneParameters tree;
    INFO(file.string());
    CHECK(file.extension() == ".txt");
    std::ifstream stream(file);
    const std::string text(std::istreambuf_iterator<char>(stream), {});
    TextFault fault;
    const auto preset = readPresetText(text, tree, fault);
    REQUIRE_MESSAGE(preset, "line " << fault.line << ": " << fault.what);
    std::set<int> ids;
    for (const PresetSetting& setting : preset->settings)
        CHECK_MESSAGE(ids.insert(setting.id).second, "line " << setting.line << ": once more");
    return {file.stem().string(), file.lexically_relative(root).parent_path().string(), *preset,
            preset->values(tree)};
}

}  // namespace

std::vector<PresetSource> readPresetSources(const std::filesystem::path& root) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
        if (entry.is_regular_file()) files.push_back(entry.path());
    std::ranges::sort(files);
    std::vector<PresetSource> sources;
    for (const auto& file : files)
        sources.push_back(read(root, file));
    return sources;
}

}  // namespace cinder::test
