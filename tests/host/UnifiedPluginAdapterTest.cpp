#include <atomic>
#include <thread>
#include <utility>

#include "host/HostRig.h"

namespace cinder::test {
namespace {

/// A host that keeps what it is handed, and has echoed nothing yet.
class SilentHost final : public UnifiedPluginAdapter {
public:
    SilentHost() {
        setHalves(std::make_unique<CinderPlugin>(stereoLayout),
                  std::make_unique<CinderProcessor>(stereoLayout, 1));
        start();
    }
    void latencyChanged() override {}
    void setHostParameter(int id, float value) override { handed.emplace_back(id, value); }

    GenericPlugin& getPlugin() { return *plugin; }
    GenericPluginProcessor& getProcessor() { return *processor; }
    bool halvesAgree() { return valuesOf(*plugin) == valuesOf(*processor); }

    std::vector<std::pair<int, float>> handed;
};

struct Window final : GenericPlugin::Listener {
    CriticalSection* realtimeDataLock() override { return lock.get(); }
    void notify(int code, unsigned value) noexcept CINDER_REALTIME override {
        lastCode = code;
        lastValue = static_cast<int>(value);
    }
    std::unique_ptr<CriticalSection> lock = CriticalSection::create();
    std::atomic<int> lastCode{0}, lastValue{0};
};

TEST_CASE("UnifiedPluginAdapter: one value goes to the host alone, all values to both") {
    const PluginHome home;
    SilentHost host;
    CHECK(host.halvesAgree());
    host.getPlugin().parameter(4)->setValue(0.25f, 0);
    CHECK(host.handed == std::vector<std::pair<int, float>>{{4, 0.25f}});
    CHECK(!host.halvesAgree());

    host.handed.clear();
    host.getPlugin().beginUpdate();
    host.getPlugin().parameter(3)->setValue(0.5f, 0);
    CHECK(host.handed.empty());
    host.getPlugin().endUpdate();
    CHECK(host.halvesAgree());
    CHECK(host.handed.size() == 899);

    host.getPlugin().getControllerMapping().assign(11, 12);
    CHECK(host.getProcessor().getControllerMapping().targetOf(11) == 12);
    SilentHost later;
    CHECK(later.getProcessor().getControllerMapping().targetOf(11) == 12);
}

TEST_CASE("UnifiedPluginAdapter: a program change loads a preset, where the user wants that") {
    HostRig rig;
    CinderPlugin& plugin = rig.host.getPlugin();
    const std::string root = plugin.presetManager(-1)->getPath();
    for (const char* const name : {"A", "B"})
        REQUIRE(plugin.savePresetFile(PresetEntry::of(root + name + ".knp")));
    rig.send(0xc0, 0);
    rig.play();
    CHECK(rig.host.dispatch() == 0);
    plugin.getSharedSettings().enableMidiProgramChanges = true;
    rig.host.setParameter(rig.idOf(GlobalTargetParameter::Mix), 0.3f);
    rig.send(0xc0, 1);
    rig.send(0xc0, 0);
    rig.play();
    CHECK(plugin.getCurrentPreset().name() == "B");
    CHECK(rig.host.dispatch() == 1);
    CHECK(plugin.getCurrentPreset().name() == "A");
    rig.send(0xc0, 99);
    rig.play();
    CHECK(rig.host.dispatch() == 1);
    CHECK(plugin.getCurrentPreset().name() == "A");
    CHECK(rig.halvesAgree());

    // Where no thread serves a queue there is nowhere else to load it.
    std::thread([&] {
        DirectPluginAdapter alone(stereoLayout, 1);
        alone.programChanged(0, 1);
        CHECK(alone.getPlugin().getCurrentPreset().name() == "B");
    }).join();
}

TEST_CASE("UnifiedPluginAdapter: a transfer brings the interface audio, sources and controllers") {
    HostRig rig;
    CinderPlugin& plugin = rig.host.getPlugin();
    Window window;
    for (const bool isOpen : {false, true}) {
        plugin.attachListener(isOpen ? &window : nullptr);
        for (int i = 0; i < 8; ++i)
            rig.play();
        const int before = plugin.getRealtimeCopies().audio(0).getTotalFrames();
        rig.host.transferRealtimeData(10);
        CHECK(plugin.getRealtimeCopies().audio(0).getTotalFrames() == before + 4);
    }
    for (int source = 0; source < 34; ++source)
        CHECK(plugin.getSourceValue(source) == rig.host.getProcessor().getSourceValue(source));
    CHECK(plugin.getSourceValue(34) == 0.0f);
    rig.send(0xb0, 33, 1);
    rig.play();
    CHECK(window.lastCode == -1027);
    CHECK(window.lastValue == 33);
    plugin.receiveMidiMessage({0xb0, 34, 1, 0});  // made by the window
    rig.play();
    CHECK(window.lastValue == 34);
    plugin.attachListener(nullptr);
}

}  // namespace
}  // namespace cinder::test
