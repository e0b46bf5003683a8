#include <atomic>
#include <chrono>

#include "plugin/PluginRig.h"

namespace cinder::test {
namespace {

using Calls = std::vector<std::string>;
using Told = std::vector<std::pair<int, int>>;

constexpr unsigned hostKnows = AbstractPluginParameter::hostKnows;

TEST_CASE("GenericPlugin: the host and the window hear of each change once, and of no other") {
    PluginRig rig;
    rig.plugin.getCurrentPreset().setModified(false);
    rig.plugin.parameter(3)->setValue(rig.plugin.parameter(3)->value(), 0);
    CHECK(rig.adapter.take().empty());
    CHECK(rig.listener.take().empty());
    CHECK(!rig.plugin.getCurrentPreset().isModified());

    rig.edit(3);
    CHECK(rig.adapter.take() == Calls{"value 3"});
    CHECK(rig.listener.take() == Told{{-1025, 3}});
    CHECK(rig.plugin.getCurrentPreset().isModified());
    rig.edit(3, hostKnows);
    CHECK(rig.adapter.take().empty());
    CHECK(rig.listener.take() == Told{{-1025, 3}});

    rig.plugin.attachListener(nullptr);
    rig.edit(3);
    CHECK(rig.listener.take().empty());
}

TEST_CASE("GenericPlugin: a bracket is one change, told by the outermost end") {
    struct Row {
        const char* what;
        bool own, fromHost, refresh;
        Calls calls;
        Told told;
    };
    for (const Row& row :
         {Row{"nothing", false, false, true, {}, {}},
          Row{"from the host", false, true, false, {}, {{-1025, -1}}},
          Row{"a state from the host", false, true, true, {"refresh"}, {{-1025, -1}}},
          Row{"edits", true, false, false, {"all"}, {{-1025, -1}}},
          Row{"both", true, true, false, {"all"}, {{-1025, -1}}},
          Row{"a preset", true, false, true, {"refresh"}, {{-1025, -1}}}}) {
        INFO(row.what);
        PluginRig rig;
        rig.plugin.beginUpdate();
        rig.plugin.beginUpdate();
        if (row.own) rig.edit(3);
        if (row.fromHost) rig.edit(4, hostKnows);
        if (row.own) rig.edit(5);
        if (row.refresh) rig.plugin.requestHostRefresh();
        CHECK(rig.plugin.parameter(3)->value() == (row.own
                                                       ? rig.plugin.parameter(3)->maximum()
                                                       : rig.plugin.parameter(3)->defaultValue()));
        rig.plugin.endUpdate();
        CHECK(rig.adapter.take().empty());
        CHECK(rig.listener.take().empty());
        rig.plugin.endUpdate();
        CHECK(rig.adapter.take() == row.calls);
        CHECK(rig.listener.take() == row.told);

        // A refresh never outlives its bracket.
        rig.plugin.beginUpdate();
        rig.edit(6);
        rig.plugin.endUpdate();
        CHECK(rig.adapter.take() == Calls{"all"});
    }
}

TEST_CASE("GenericPlugin: what another thread changes reaches the host on the interface's thread") {
    PluginRig rig;
    const int highQuality = rig.plugin[GlobalChoiceParameter::HighQuality].getId();
    rig.onAnotherThread([&] {
        rig.edit(3);
        rig.edit(highQuality);
        rig.plugin.beginUpdate();
        rig.edit(4);
        rig.plugin.requestHostRefresh();
        rig.plugin.endUpdate();
    });
    CHECK(rig.adapter.take().empty());
    CHECK(rig.listener.take().size() == 3);
    CHECK(rig.plugin.dispatchEvents() == 4);
    CHECK(rig.adapter.take() ==
          Calls{"value 3", "latency", "value " + std::to_string(highQuality), "refresh"});
    CHECK(rig.plugin.getLatency() == 8);

    // Nothing out of range, and nothing unknown, gets anywhere.
    for (const auto& [event, argument] : {std::pair{2, 899}, {2, -3}, {7, 0}, {1, 0x7fffffff}})
        rig.plugin.getInterfaceThread().post(event, argument);
    CHECK(rig.plugin.dispatchEvents() == 4);
    CHECK(rig.adapter.take().empty());
}

TEST_CASE("GenericPlugin: the queue goes where the window opens, and nothing is left behind") {
    PluginRig rig;  // this thread is the first of the process, so it had a queue at once
    rig.onAnotherThread([&] { rig.edit(3); });
    RecordingListener window;
    rig.onAnotherThread([&] {
        rig.plugin.attachListener(&window);
        CHECK(rig.plugin.dispatchEvents() == 2);
        rig.adapter.take();
        rig.edit(4);
        CHECK(rig.adapter.take() == Calls{"value 4"});
    });
    CHECK(rig.plugin.dispatchEvents() == 0);  // no longer ours
    rig.edit(5);
    CHECK(rig.adapter.take().empty());
    rig.plugin.attachListener(&rig.listener);
    CHECK(rig.adapter.take().empty());
    rig.plugin.dispatchEvents();
    CHECK(rig.adapter.take().back() == "refresh");

    rig.onAnotherThread([&] {  // without a loop there is no queue, and so no way around
        CinderPlugin other(stereoLayout);
        RecordingAdapter adapter;
        other.setAdapter(&adapter);
        CHECK(!other.getInterfaceThread().hasQueue());
        std::thread([&] { other.parameter(3)->setValue(0.5f, 0); }).join();
        CHECK(adapter.take() == Calls{"value 3"});
        RecordingListener own;
        other.attachListener(&own);
        CHECK(other.getInterfaceThread().hasQueue());
        other.attachListener(nullptr);
        other.setAdapter(nullptr);
    });
}

TEST_CASE("GenericPlugin: when a listener is detached no call into it is running") {
    struct SlowListener final : GenericPlugin::Listener {
        CriticalSection* realtimeDataLock() override { return nullptr; }
        void notify(int, unsigned) noexcept CINDER_REALTIME override {
            isInside = true;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            isInside = false;
        }
        std::atomic<bool> isInside{false};
    };
    PluginRig rig;
    SlowListener slow;
    std::atomic<bool> isOver{false};
    std::thread busy([&] {
        while (!isOver) {
            rig.plugin.notify(-1025, 0);
            // Detaching waits for a gap between two calls.
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    for (int i = 0; i < 5; ++i) {
        rig.plugin.attachListener(&slow);
        while (!slow.isInside)
            std::this_thread::yield();
        rig.plugin.attachListener(nullptr);
        CHECK(!slow.isInside);
    }
    isOver = true;
    busy.join();
}

TEST_CASE("GenericPlugin: a controller map is shared, and every instance passes a change on") {
    PluginRig rig;
    CinderPlugin second(monoLayout);
    RecordingAdapter adapter;
    second.setAdapter(&adapter);
    second.getControllerMapping().assign(7, 42);
    CHECK(adapter.take() == Calls{"map"});
    CHECK(rig.adapter.take() == Calls{"map"});
    CHECK(rig.listener.take() == Told{{-1029, 0}});
    REQUIRE(rig.plugin.writeControllerMap());
    rig.plugin.loadControllerMapDefaults();
    CHECK(second.getControllerMapping().targetOf(7) == -1);
    REQUIRE(second.readControllerMap());
    CHECK(rig.plugin.getControllerMapping().targetOf(7) == 42);
    CHECK(std::filesystem::file_size(rig.home.data() / "MidiControllerMap.knm") == 520);
    second.setAdapter(nullptr);
}

}  // namespace
}  // namespace cinder::test
