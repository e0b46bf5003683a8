#include <doctest/doctest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "params/FloatPluginParameter.h"
#include "params/ParameterSetList.h"
#include "params/TestOwner.h"
#include "support/RealtimeGuard.h"
#include "support/Rng.h"

namespace cinder {
namespace {

using test::TestOwner;

struct Step final : PluginParameterSet {
    Step(GenericParameterOwner* owner, const std::string& name)
        : PluginParameterSet(owner, name), height(this, name + " Height", {0.0f, 1.0f, 0.25f}) {}
    FloatPluginParameter height;
};

/// A set with a list of sets in it.
struct Voice final : PluginParameterSet {
    Voice(GenericParameterOwner* owner, const std::string& name)
        : PluginParameterSet(owner, name),
          level(this, name + " Level", {-1.0f, 1.0f, 0.5f}),
          steps(this, name + " Steps", {1, 3, 2},
                [&](int i) {
                    return std::make_unique<Step>(this, name + " Step " + std::to_string(i + 1));
                }),
          mode(this, name + " Mode", {0, 7, 3}) {}
    FloatPluginParameter level;
    ParameterSetList<Step> steps;
    IndexedPluginParameter<int> mode;
};

struct Flag final : PluginParameterSet {
    Flag(GenericParameterOwner* owner, const std::string& name)
        : PluginParameterSet(owner, name), isSet(this, name + " Flag") {}
    IndexedPluginParameter<bool> isSet;
};

constexpr int numVoices = 5, parametersPerVoice = 6;

struct Tree {
    explicit Tree(int minimum = 0)
        : voices(&owner, "Voices", {minimum, numVoices, minimum},
                 [this](int i) {
                     return std::make_unique<Voice>(&owner, "Voice " + std::to_string(i + 1));
                 }),
          flags(numVoices, [this](int i) {
              return std::make_unique<Flag>(&owner, "Voice " + std::to_string(i + 1));
          }) {
        voices.addExtension(&flags);
    }
    /// Everything that belongs to a voice.
    std::vector<float> valuesOf(int voice) const {
        std::vector<float> values;
        for (int k = 0; k < parametersPerVoice; ++k)
            values.push_back(voices.set(voice)->parameter(k)->value());
        values.push_back(flags.set(voice)->isSet.value());
        return values;
    }

    TestOwner owner{true};
    ParameterSetList<Voice> voices;
    ParameterSetArray<Flag> flags;
};

TEST_CASE("Parameter sets: ids are flat, sets of a name share a group") {
    Tree tree;
    TestOwner& owner = tree.owner;
    REQUIRE(owner.parameterCount() == 1 + numVoices * (parametersPerVoice + 1));
    CHECK(tree.voices.firstId() == 0);
    CHECK(owner.parameter(0)->getName() == "Num Active Voices");
    CHECK(owner.parameter(0)->getGroup() == 0);
    CHECK(owner.parameter(8)->getName() == "Num Active Voice 2 Steps");
    CHECK(owner.parameter(11)->getName() == "Voice 2 Step 3 Height");
    CHECK(owner.groupName(owner.parameter(11)->getGroup()) == "Voice 2 Step 3");
    CHECK(owner.parameter(12)->getName() == "Voice 2 Mode");
    CHECK(owner.parameter(12)->getGroup() == tree.flags.set(1)->isSet.getGroup());
    CHECK(owner.groupName(owner.parameter(12)->getGroup()) == "Voice 2");
    CHECK(owner.groupName(99).empty());

    std::vector<AbstractPluginParameter*> collected;
    tree.voices.collectParameters(collected);
    tree.flags.collectParameters(collected);
    REQUIRE(collected.size() == static_cast<std::size_t>(owner.parameterCount()));
    for (std::size_t id = 0; id < collected.size(); ++id)
        CHECK(collected[id] == owner.parameter(static_cast<int>(id)));

    ParameterSetList<Step>& inner = tree.voices.set(1)->steps;
    CHECK(inner.containsId(8));
    CHECK(inner.containsId(11));
    CHECK(!inner.containsId(12));
    CHECK(inner.containsId(-1));
    CHECK(tree.voices.containsId(35));  // by its extension
    CHECK(!tree.voices.containsId(36));
    CHECK(!tree.flags.containsId(30));
    const ParameterSetArray<Flag> none(0, [](int) { return std::unique_ptr<Flag>(); });
    CHECK(!none.containsId(-1));
    CHECK(none.firstId() == -1);
    CHECK(tree.voices.set(numVoices) == nullptr);
    CHECK(tree.voices.set(-1) == nullptr);
}

TEST_CASE("Parameter lists: sets move like the entries of a vector, in one bracket") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    for (int minimum : {0, 1}) {
        Tree tree(minimum);
        const std::vector<float> defaults = tree.valuesOf(0);
        std::vector<std::vector<float>> model(numVoices, defaults);  // in use, then the rest
        int count = minimum;
        for (int round = 0; round < 3000; ++round) {
            const int action = rng.integer(0, 3), index = rng.integer(-1, numVoices + 1);
            tree.owner.told.clear();
            if (action == 0) {
                tree.voices.insertSet(index);
                if (index >= 0 && index <= count && count < numVoices) {
                    // A copy of the one in front of it; of itself at the very front.
                    const std::vector<float> copied =
                        model[static_cast<std::size_t>(std::max(index - 1, 0))];
                    if (count > 0) model.insert(model.begin() + index, copied);
                    model.resize(numVoices);
                    ++count;
                }
            } else if (action == 1) {
                tree.voices.removeSet(index);
                if (index >= 0 && index < count && count > minimum) {
                    model.erase(model.begin() + index);
                    model.insert(model.begin() + --count, defaults);
                }
            } else if (count > 0) {
                const int voice = rng.integer(0, count - 1), k = rng.integer(0, parametersPerVoice);
                AbstractPluginParameter& changed = k < parametersPerVoice
                                                       ? *tree.voices.set(voice)->parameter(k)
                                                       : tree.flags.set(voice)->isSet;
                changed.setValue(changed.denormalize(static_cast<float>(rng.real(0.0, 1.0))), 0);
                model[static_cast<std::size_t>(voice)][static_cast<std::size_t>(k)] =
                    changed.value();
                tree.owner.told.clear();
            }
            CHECK(tree.voices.activeCount() == count);
            for (int i = 0; i < numVoices; ++i) {
                INFO("round " << round << ", voice " << i);
                CHECK(tree.valuesOf(i) == model[static_cast<std::size_t>(i)]);
            }
            CHECK(tree.owner.depth == 0);
            for (const TestOwner::Told& told : tree.owner.told) {
                CHECK(told.depth == 1);
                CHECK(told.flags == 0);
            }
        }
        tree.voices.resetToDefaults();
        CHECK(tree.voices.activeCount() == count);
        for (int i = 0; i < numVoices; ++i)
            CHECK(tree.valuesOf(i) == defaults);
    }
}

TEST_CASE("Parameter lists: producers run exactly while their set is in use, and start clean") {
    struct Counter final : wave::Source {
        explicit Counter(wave::Environment* environment) : wave::Source(environment) {
            makeResettable();
        }
        void render(wave::BasicBlock<float>*, int, unsigned) noexcept CINDER_REALTIME override {}
        void reset() noexcept CINDER_REALTIME override { ++numResets; }
        int numResets = 0;
    };
    wave::Environment environment;
    std::vector<std::unique_ptr<Counter>> counters;
    for (int i = 0; i < 2 * numVoices; ++i)
        counters.push_back(std::make_unique<Counter>(&environment));
    Tree tree;
    const auto from = [&](std::size_t first) {
        std::vector<wave::Producer*> row;
        for (std::size_t i = first; i < first + numVoices; ++i)
            row.push_back(counters[i].get());
        return row;
    };
    tree.voices.addProducers(from(0));
    std::vector<wave::Producer*> withGap = from(numVoices);
    withGap[1] = nullptr;
    tree.voices.addProducers(withGap);
    const auto checkRunning = [&](int count) {
        for (int i = 0; i < 2 * numVoices; ++i) {
            INFO("producer " << i << ", " << count << " active");
            const bool isSwitched = i != numVoices + 1;
            CHECK(counters[static_cast<std::size_t>(i)]->isActive() ==
                  (!isSwitched || i % numVoices < count));
        }
    };
    tree.voices.numActive.applyValue(0.0f);
    checkRunning(0);
    for (int count : {3, 5, 2, 2, 4, 0, 1}) {
        const auto report =
            test::guarded([&] { tree.voices.numActive.applyValue(static_cast<float>(count)); });
        CHECK_MESSAGE(report.isClean(), report);
        checkRunning(count);
    }
    CHECK(counters[0]->numResets == 2);
    CHECK(counters[2]->numResets == 2);
    CHECK(counters[4]->numResets == 1);
}

}  // namespace
}  // namespace cinder
