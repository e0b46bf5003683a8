#include <memory>
#include <sstream>

#include "plugin/PluginRig.h"
#include "state/MemoryStream.h"
#include "state/chunks/InstanceState.h"

namespace cinder::test {
namespace {

std::string settingsText(const PluginHome& home) {
    return bytesOf(home.folder / "config/kestrelon/cinder/1.0/settings.conf");
}

TEST_CASE("GenericPlugin: the first instance makes what is shared, the last one frees it") {
    const PluginHome home;
    {
        auto first = std::make_unique<CinderPlugin>(stereoLayout);
        CHECK(first->getSharedSettings().showWelcomeHint);
        CHECK(settingsText(home).find("CurrentVersion=text:1.00\n") != std::string::npos);
        first->getSharedSettings().showWelcomeHint = false;  // as the window does
        first->getControllerMapping().set(1, 2);

        CinderPlugin second(stereoLayout);
        CHECK(GenericPlugin::instanceCount() == 2);
        CHECK(&second.getSharedSettings() == &first->getSharedSettings());
        CHECK(second.presetManager(-1) == first->presetManager(-1));
        first.reset();
        CHECK(second.getControllerMapping().targetOf(1) == 2);

        second.getCinderSettings().layout = InterfaceLayout::Wide;
        second.getCinderSettings().showModulation = true;
        CHECK(second.contentWidth() == 926);
        CHECK(second.contentHeight() == 560);
    }
    CHECK(GenericPlugin::instanceCount() == 0);
    const CinderPlugin third(stereoLayout);  // all anew, from the disk
    CHECK(!third.getSharedSettings().showWelcomeHint);
    CHECK(third.contentWidth() == 926);
    CinderPlugin fourth(stereoLayout);
    CHECK(fourth.getControllerMapping().targetOf(1) == -1);
}

TEST_CASE("GenericPlugin: component presets cover a set each, a band without its crossover") {
    const PluginHome home;
    CinderPlugin plugin(stereoLayout);
    const int counts[] = {6, 6, 6, 4, 10}, sizes[] = {14, 73, 8, 3, 3};
    const char* const folders[] = {"Band", "XLFO", "EG", "EF", "MIDI"};
    std::vector<bool> isCovered(899);
    for (int kind = 0; kind < 5; ++kind) {
        CHECK(!plugin.componentCollection(kind, counts[kind]));
        for (int i = 0; i < counts[kind]; ++i) {
            const auto& parameters = plugin.componentCollection(kind, i)->parameters;
            CHECK(static_cast<int>(parameters.size()) == sizes[kind]);
            for (const AbstractPluginParameter* parameter : parameters) {
                CHECK(!isCovered[static_cast<std::size_t>(parameter->getId())]);
                isCovered[static_cast<std::size_t>(parameter->getId())] = true;
                CHECK(parameter->getName().find("Crossover") == std::string::npos);
            }
        }
        CHECK(std::filesystem::is_directory(home.data() / "Component Presets" / folders[kind]));
        CHECK(plugin.presetManager(kind)->getExtension() ==
              std::vector<std::string>{".band", ".xlfo", ".eg", ".ef", ".midi"}[kind]);
    }
    CHECK(!plugin.componentCollection(5, 0));
    CHECK(!plugin.presetManager(5));
}

/// The second section of a state.
std::string instanceSection(const InstanceState& state, std::string_view code = "KCnd") {
    std::ostringstream out;
    REQUIRE(writeInstanceState(out, code, state));
    return std::move(out).str();
}

TEST_CASE("GenericPlugin: numbers of instances are unique, and a broken section changes nothing") {
    PluginRig rig;
    CinderPlugin other(stereoLayout);
    const auto read = [](CinderPlugin& plugin, const std::string& bytes) {
        MemoryStream in(bytes);
        return plugin.readPluginState(in);
    };
    CHECK(other.getInstanceNumber() == -1);
    CHECK(read(other, instanceSection({"", 0x7fffffff, true, ""})));
    CHECK(read(rig.plugin, instanceSection({"Named", 0x7fffffff, false, "Lead vocal"})));
    CHECK(other.getInstanceNumber() == 0x7fffffff);
    CHECK(rig.plugin.getInstanceNumber() == -1);
    CHECK(rig.plugin.getInstanceName() == "Lead vocal");
    CHECK(rig.plugin.getCurrentPreset().name() == "Named");
    CHECK(rig.listener.take() == std::vector<std::pair<int, int>>{{-1026, 0}});
    CHECK(read(rig.plugin, instanceSection({"Named", 7, false, "Lead vocal"})));
    CHECK(rig.plugin.getInstanceNumber() == 7);
    CHECK(rig.listener.take().empty());

    const std::string whole = instanceSection({"New", 9, true, "X"});
    for (std::size_t length = 0; length < whole.size(); ++length)
        CHECK(!read(rig.plugin, whole.substr(0, length)));
    CHECK(!read(rig.plugin, instanceSection({"New", 9, true, "X"}, "KOth")));
    CHECK(rig.plugin.getInstanceNumber() == 7);
    CHECK(rig.plugin.getInstanceName() == "Lead vocal");
    CHECK(rig.plugin.getCurrentPreset().name() == "Named");
    CHECK(rig.listener.take().empty());
}

/// A product whose instances bear the names of their tracks.
struct NamedPlugin final : GenericPlugin {
    NamedPlugin() : GenericPlugin(stereoLayout, isNamedAfterTrack) { init("Named"); }
    std::string_view productCode() const override { return "KNam"; }
    std::string_view productVersion() const override { return "2.1"; }
    std::int32_t formatVersion() const override { return 1; }
};

TEST_CASE("GenericPlugin: an instance is named after its track, and no two alike") {
    const PluginHome home;
    NamedPlugin one, two;
    CHECK(one.getInstanceName() == "Named");
    CHECK(two.getInstanceName() == "Named (2)");
    two.setTrackName("Bass");
    NamedPlugin three;
    CHECK(three.getInstanceName() == "Named (2)");
    three.setTrackName("Bass");
    CHECK(three.getInstanceName() == "Bass (2)");
    CHECK(three.getVersionInfo().versionedName() == "Named 2");
}

TEST_CASE("CinderPlugin: the first start in a fresh home brings the factory presets") {
    const PluginHome home(PluginHome::Start::New);
    {
        CinderPlugin plugin(stereoLayout);
        CHECK(plugin.getCurrentPreset().name() == "Default Setting");
        const PresetManager& presets = *plugin.presetManager(-1);
        std::vector<PresetEntry*> list;
        presets.allPresets(list);
        CHECK(list.size() >= 40);
        for (const PresetEntry* const entry : list)
            CHECK_MESSAGE(plugin.loadPreset(*entry), entry->name);
        for (int kind = 0; kind < 5; ++kind) {
            const PresetEntry* const entry = plugin.presetManager(kind)->findByName("Default");
            REQUIRE(entry);
            CHECK(plugin.loadComponentPreset(kind, 0, entry->path));
        }
    }
    const auto clean = home.presets() / "Clean.knp", own = home.presets() / "Own.knp";
    const std::string asDelivered = bytesOf(clean);
    putBytes(clean, "changed");
    putBytes(own, asDelivered);
    std::filesystem::remove(home.presets() / "Default Setting.knp");
    CinderPlugin later(stereoLayout);
    CHECK(later.getCurrentPreset().name().empty());
    CHECK(bytesOf(clean) == "changed");
    CHECK(later.installFactoryFiles(true));
    CHECK(bytesOf(clean) == asDelivered);
    CHECK(std::filesystem::exists(own));
    CHECK(later.presetManager(-1)->findByName("Default Setting"));
}

}  // namespace
}  // namespace cinder::test
