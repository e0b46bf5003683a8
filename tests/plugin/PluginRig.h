#pragma once

#include <doctest/doctest.h>

#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "params/AbstractPluginParameter.h"
#include "plugin/CinderPlugin.h"
#include "support/ParameterValues.h"
#include "support/PluginHome.h"

namespace cinder::test {

/// A host that only keeps what it is told: "value 5", "refresh" (all, as a new state), "all",
/// "latency", "map", "preset".
struct RecordingAdapter final : GenericPlugin::Adapter {
    void controllerMapChanged() override { add("map"); }
    void latencyChanged() override { add("latency"); }
    void sendMidiMessage(const MidiEvent&) override { add("midi"); }
    void parameterChanged(int id, bool refresh) override {
        add(id >= 0 ? "value " + std::to_string(id) : refresh ? "refresh" : "all");
    }
    void presetChanged(int) override { add("preset"); }
    void transferRealtimeData(unsigned) override {}
    void setHostParameter(int, float) override {}

    void add(const std::string& call) { calls.push_back(call); }
    std::vector<std::string> take() { return std::exchange(calls, {}); }
    std::vector<std::string> calls;
};

/// A window that only keeps what it is told.
struct RecordingListener final : GenericPlugin::Listener {
    CriticalSection* realtimeDataLock() override { return nullptr; }
    void notify(int code, unsigned value) noexcept CINDER_REALTIME override {
        const std::scoped_lock inside(mutex);
        told.emplace_back(code, static_cast<int>(value));
    }
    std::vector<std::pair<int, int>> take() {
        const std::scoped_lock inside(mutex);
        return std::exchange(told, {});
    }
    std::mutex mutex;
    std::vector<std::pair<int, int>> told;
};

/// A value of the parameter that isn't the one it has.
inline float otherValue(const AbstractPluginParameter& parameter) {
    return parameter.value() == parameter.maximum() ? parameter.minimum() : parameter.maximum();
}

/// An instance in a home of its own, with a host and a window.
struct PluginRig {
    PluginRig() {
        plugin.setAdapter(&adapter);
        plugin.attachListener(&listener);
        forget();
    }
    ~PluginRig() { plugin.attachListener(nullptr); }

    void forget() {
        adapter.take();
        listener.take();
    }
    void edit(int id, unsigned flags = 0) {
        plugin.parameter(id)->setValue(otherValue(*plugin.parameter(id)), flags);
    }
    template <typename Function>
    void onAnotherThread(Function&& function) {
        std::thread(std::forward<Function>(function)).join();
    }

    PluginHome home;
    RecordingAdapter adapter;
    RecordingListener listener;
    CinderPlugin plugin{stereoLayout};
};

}  // namespace cinder::test
