#include "plugin/PluginRig.h"
#include "support/Rng.h"

namespace cinder::test {
namespace {

using Calls = std::vector<std::string>;
using Told = std::vector<std::pair<int, int>>;

PresetEntry entryIn(const std::string& folder, const std::string& name) {
    return PresetEntry::of(folder + name + ".knp");
}

TEST_CASE("GenericPlugin: a saved preset comes back whole, with its identity") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    PluginRig rig;
    CinderPlugin& plugin = rig.plugin;
    std::filesystem::create_directories(rig.home.presets() / "_2 B");
    plugin.rescanPresets();
    const std::string root = plugin.presetManager(-1)->getPath();
    const auto saved = entryIn(root, "Mine"), other = entryIn(root + "_2 B\\", "Other");
    REQUIRE(plugin.savePresetFile(other));
    randomise(plugin, rng);
    rig.forget();
    REQUIRE(plugin.savePresetFile(saved));
    CHECK(rig.adapter.take() == Calls{"preset"});
    CHECK(rig.listener.take() == Told{{-1026, 0}});
    CHECK(plugin.getCurrentPreset().identity() == PresetIdentity{"Mine", saved.path, false});
    const auto values = valuesOf(plugin);

    plugin.loadProgram(0, 0);  // folders come first in the list
    CHECK(plugin.getCurrentPreset().name() == "Other");
    rig.forget();
    REQUIRE(plugin.loadPreset(saved));
    CHECK(valuesOf(plugin) == values);
    CHECK(rig.adapter.take() == Calls{"refresh", "preset"});
    CHECK(rig.listener.take() == Told{{-1025, -1}, {-1026, 0}});
    CHECK(plugin.getCurrentPreset().identity() == PresetIdentity{"Mine", saved.path, false});

    const std::string bytes = bytesOf(rig.home.presets() / "Mine.knp");
    CHECK(bytes.size() == 3608);
    putBytes(rig.home.presets() / "Torn.knp", bytes.substr(0, 2000));
    putBytes(rig.home.presets() / "Foreign.knp", "XXXX" + bytes.substr(4));
    CHECK(!plugin.loadPreset(entryIn(root, "Foreign")));
    CHECK(!plugin.loadPreset(entryIn(root, "Missing")));
    CHECK(rig.adapter.take().empty());
    CHECK(valuesOf(plugin) == values);
    CHECK(!plugin.loadPreset(entryIn(root, "Torn")));
    CHECK(rig.adapter.take() == Calls{"refresh"});
    CHECK(plugin.getCurrentPreset().name() == "Mine");
    plugin.loadProgram(0, 2);
    plugin.loadProgram(1 << 20, 127);
    plugin.loadProgram(-1, 0);
    CHECK(rig.adapter.take().empty());
    const PresetEntry* const inTree = plugin.presetManager(-1)->findByName("Mine");
    REQUIRE(inTree);
    CHECK(plugin.savePresetFile(*inTree));  // which scans the tree anew
    CHECK(plugin.getCurrentPreset().path() == entryIn(root, "Mine").path);
}

TEST_CASE("GenericPlugin: a name from the host finds its file, or stands alone") {
    PluginRig rig;
    rig.plugin.rescanPresets();
    const std::string root = rig.plugin.presetManager(-1)->getPath();
    const std::string longName(70, 'n');
    REQUIRE(rig.plugin.savePresetFile(entryIn(root, longName)));
    rig.forget();
    rig.plugin.setPresetName(longName.substr(0, 63), 63);
    rig.plugin.setPresetName(longName, -1);
    CHECK(rig.listener.take().empty());
    rig.plugin.setPresetName("Elsewhere", -1);
    CHECK(rig.plugin.getCurrentPreset().path().empty());
    rig.plugin.setPresetName(longName, -1);
    CHECK(rig.plugin.getCurrentPreset().path() == root + longName + ".knp");
    CHECK(rig.listener.take() == Told{{-1026, 0}, {-1026, 0}});
}

TEST_CASE(
    "GenericPlugin: a new instance starts from the default preset, the one at the root first") {
    PluginRig rig;
    rig.plugin.rescanPresets();
    const std::string root = rig.plugin.presetManager(-1)->getPath();
    std::filesystem::create_directories(rig.home.presets() / "A");
    for (const auto& [folder, id] : {std::pair{root + "A\\", 3}, {root, 4}}) {
        rig.edit(id);
        REQUIRE(rig.plugin.savePresetFile(entryIn(folder, "Default Setting")));
        CinderPlugin fresh(stereoLayout);
        CHECK(valuesOf(fresh) == valuesOf(rig.plugin));
        CHECK(fresh.getCurrentPreset().identity() ==
              PresetIdentity{"Default Setting", folder + "Default Setting.knp", false});
    }
}

TEST_CASE("GenericPlugin: a component preset goes into any set of its kind and no further") {
    PluginRig rig;
    CinderPlugin& plugin = rig.plugin;
    for (const AbstractPluginParameter* parameter : plugin.componentCollection(0, 0)->parameters)
        rig.edit(parameter->getId());
    const std::string path = plugin.presetManager(0)->getPath() + "Mine.band";
    REQUIRE(plugin.saveComponentPreset(0, 0, path));
    CHECK(plugin.presetManager(0)->findByName("Mine"));

    auto expected = valuesOf(plugin);
    for (std::size_t i = 0; i < 14; ++i)
        expected[static_cast<std::size_t>(
            plugin.componentCollection(0, 2)->parameters[i]->getId())] =
            plugin.componentCollection(0, 0)->parameters[i]->value();
    rig.forget();
    REQUIRE(plugin.loadComponentPreset(0, 2, path));
    CHECK(valuesOf(plugin) == expected);
    CHECK(rig.adapter.take() == Calls{"all"});
    CHECK(!plugin.loadComponentPreset(0, 6, path));
}

}  // namespace
}  // namespace cinder::test
