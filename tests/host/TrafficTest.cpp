#include <atomic>
#include <functional>
#include <thread>

#include "host/HostRig.h"

namespace cinder::test {
namespace {

struct Window final : GenericPlugin::Listener {
    CriticalSection* realtimeDataLock() override { return lock.get(); }
    void notify(int, unsigned) noexcept CINDER_REALTIME override { ++told; }
    std::unique_ptr<CriticalSection> lock = CriticalSection::create();
    std::atomic<int> told{0};
};

float randomValue(const AbstractPluginParameter& parameter, Rng& rng) {
    return parameter.denormalize(static_cast<float>(rng.real(0.0, 1.0)));
}

void useWindow(HostRig& rig, Window& window, Rng rng) {
    CinderPlugin& plugin = rig.host.getPlugin();
    const auto saved = PresetEntry::of(plugin.presetManager(-1)->getPath() + "Saved.knp");
    for (int opening = 0; opening < 6; ++opening) {
        plugin.attachListener(&window);
        plugin.getUndoHistory().open();
        for (int edit = 0; edit < 20; ++edit) {
            AbstractPluginParameter& parameter = *plugin.parameter(rng.integer(0, 898));
            parameter.setValue(randomValue(parameter, rng), 0);
            plugin.pushUndo(parameter.getId());
            if (edit % 5 == 0) plugin.getUndoHistory().undo();
            rig.host.transferRealtimeData(5);
            rig.host.dispatch();
        }
        plugin.getUndoHistory().toggleCompare();
        plugin.getControllerMapping().assign(rng.integer(1, 31), rng.integer(0, 898));
        CHECK(plugin.savePresetFile(saved));
        CHECK(plugin.loadPreset(saved));
        plugin.attachListener(nullptr);
    }
}

void automate(HostRig& rig, Rng rng, const std::atomic<bool>& isOver) {
    std::string state = rig.state();
    while (!isOver) {
        for (int i = 0; i < 50; ++i) {
            const int id = rng.integer(0, 898);
            rig.host.setParameter(id, randomValue(*rig.host.getPlugin().parameter(id), rng));
        }
        CHECK(rig.read(state));
        state = rig.state();
        rig.host.setBypassed(rng.integer(0, 1) == 1);
    }
}

void playOn(HostRig& rig, Rng rng, const std::atomic<bool>& isOver) {
    while (!isOver) {
        rig.send(0xb0, rng.integer(1, 31), rng.integer(0, 127));
        if (rng.integer(0, 9) == 0) rig.send(0xc0, 0);
        rig.play();
    }
}

TEST_CASE("UnifiedPluginAdapter: host, window and audio at once leave the halves alike") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    HostRig rig;
    rig.host.getPlugin().getSharedSettings().enableMidiProgramChanges = true;
    rig.host.getPlugin().getControllerMapping().set(7, 4);
    Window window;
    std::atomic<bool> isOver{false};
    std::thread audio(playOn, std::ref(rig), Rng(rng.next()), std::cref(isOver));
    std::thread hostThread(automate, std::ref(rig), Rng(rng.next()), std::cref(isOver));
    useWindow(rig, window, Rng(rng.next()));
    isOver = true;
    audio.join();
    hostThread.join();
    CHECK(window.told > 0);
    while (rig.host.dispatch() > 0) {
    }
    rig.play();
    while (rig.host.dispatch() > 0) {
    }
    CHECK(rig.halvesAgree());
}

}  // namespace
}  // namespace cinder::test
