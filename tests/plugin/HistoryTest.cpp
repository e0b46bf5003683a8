#include <algorithm>
#include <array>
#include <deque>

#include "plugin/PluginRig.h"
#include "support/Rng.h"

namespace cinder::test {
namespace {

/// What undo, redo and A/B mean, without a ring and without a plug-in.
struct Model {
    struct State {
        std::vector<float> values;
        PresetIdentity preset;
        int side = 0;
    };

    explicit Model(State initial) : present(initial), steps{initial}, sides{initial, initial} {}

    void commit() {
        present.side = side;
        steps.resize(at + 1);
        steps.push_back(present);
        if (steps.size() > 101)
            steps.erase(steps.begin());
        else
            ++at;
        isDirty = true;
    }
    bool go(int delta) {
        if (delta < 0 ? at == 0 : at + 1 == steps.size()) return false;
        at += static_cast<std::size_t>(delta);
        if (steps[at].side != side) sides[static_cast<std::size_t>(side)] = present;
        side = steps[at].side;
        present = steps[at];
        isDirty = true;
        return true;
    }
    void toggle() {
        sides[static_cast<std::size_t>(side)] = present;
        side = 1 - side;
        present = sides[static_cast<std::size_t>(side)];
        const bool wasDirty = isDirty;
        commit();
        isDirty = wasDirty;
    }
    void copy() {
        sides[static_cast<std::size_t>(1 - side)] = present;
        isDirty = false;
    }

    State present;
    std::deque<State> steps;
    std::size_t at = 0;
    std::array<State, 2> sides;
    int side = 0;
    bool isDirty = false;
};

Model::State presentOf(CinderPlugin& plugin) {
    return {valuesOf(plugin), plugin.getCurrentPreset().identity(), 0};
}

TEST_CASE("UndoHistory: random edits, undo, redo and A/B do what a plain model does") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    PluginRig rig;
    CinderPlugin& plugin = rig.plugin;
    UndoHistory& history = plugin.getUndoHistory();
    history.open();
    Model model(presentOf(plugin));

    for (int i = 0; i < 3000; ++i) {
        // Long runs of one kind, so that the ring goes round and all of it is undone.
        static constexpr const char* kinds = "eeeeeeuuuurrrrtcha";
        const char kind = i % 700 < 120 ? 'e' : i % 700 < 240 ? 'u' : kinds[rng.integer(0, 17)];
        const int id = rng.integer(0, 898);
        switch (kind) {
            case 'e':
                rig.edit(id);
                model.present = presentOf(plugin);
                plugin.pushUndo(id);
                model.commit();
                break;
            case 'a':  // automation and host states leave no step
                rig.edit(id, AbstractPluginParameter::hostKnows);
                model.present = presentOf(plugin);
                break;
            case 'h':
                model.present.preset.path = std::to_string(id % 3);
                model.present.preset.name = std::to_string(id);
                plugin.getCurrentPreset().assign(model.present.preset);
                break;
            case 'u':
                CHECK(history.undo() == model.go(-1));
                break;
            case 'r':
                CHECK(history.redo() == model.go(1));
                break;
            case 't':
                history.toggleCompare();
                model.toggle();
                break;
            case 'c':
                plugin.getCompareStates().copyToOther();
                model.copy();
                break;
        }
        REQUIRE(valuesOf(plugin) == model.present.values);
        REQUIRE(plugin.getCurrentPreset().identity() == model.present.preset);
        REQUIRE(plugin.getCompareStates().getCurrent() == model.side);
        REQUIRE(plugin.getCompareStates().isDirty() == model.isDirty);
        REQUIRE(history.getUndoCount() == static_cast<int>(model.at));
        REQUIRE(history.getRedoCount() == static_cast<int>(model.steps.size() - 1 - model.at));
    }
}

TEST_CASE(
    "UndoHistory: a restored state is one refresh, and names a new preset only if it is one") {
    PluginRig rig;
    UndoHistory& history = rig.plugin.getUndoHistory();
    history.open();
    CHECK(history.getStates().at(0).description == "Initial state");
    CHECK(!history.undo());
    rig.edit(1);
    rig.edit(2);
    rig.plugin.pushUndo(2);
    CHECK(history.getUndoCount() == 1);
    history.open();  // a window that opens again
    CHECK(history.getUndoCount() == 1);

    rig.forget();
    CHECK(history.undo());
    CHECK(rig.adapter.take() == std::vector<std::string>{"refresh"});
    CHECK(rig.listener.take() == std::vector<std::pair<int, int>>{{-1025, -1}, {-1028, 0}});
    CHECK(!rig.plugin.getCurrentPreset().isModified());
    CHECK(history.redo());
    CHECK(rig.plugin.getCurrentPreset().isModified());

    rig.plugin.getCurrentPreset().assign({"Other", "\\other.knp", false});
    rig.forget();
    history.undo();
    CHECK(rig.adapter.take() == std::vector<std::string>{"refresh", "preset"});
    CHECK(rig.listener.take() ==
          std::vector<std::pair<int, int>>{{-1025, -1}, {-1026, 0}, {-1028, 0}});
}

}  // namespace
}  // namespace cinder::test
