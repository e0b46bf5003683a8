#include <doctest/doctest.h>

#include <vector>

#include "modulation/matrix/MatrixRig.h"
#include "modulation/matrix/SlotModel.h"

namespace cinder {
namespace {

using test::guarded;
using test::MatrixRig;
using test::ModelController;
using test::Rng;
using test::SlotChange;
using test::SlotModel;

constexpr int xlfo1 = 8, xlfo2 = 9, xy1 = 0;
constexpr int xlfo1Freq = 83, xlfo2Freq = 86, drive = 7;

void checkAgainstModel(const ModulationMatrix& matrix, const SlotModel& model) {
    const std::vector<bool> active = model.active();
    std::vector<std::vector<int>> aimed(static_cast<std::size_t>(numModulationTargets));
    for (int i = 0; i < numModulationSlots; ++i) {
        const ModulationMatrix::Slot& slot = matrix.getSlot(i);
        const SlotModel::Slot& expected = model.slots[static_cast<std::size_t>(i)];
        CAPTURE(i);
        CHECK(slot.source == expected.source);
        CHECK(slot.target == expected.target);
        CHECK(slot.bypassed == expected.bypassed);
        CHECK(slot.inverted == expected.inverted);
        CHECK(slot.isActive() == active[static_cast<std::size_t>(i)]);
        if (slot.target >= 0) aimed[static_cast<std::size_t>(slot.target)].push_back(i);
        const ModulationMatrix::Target& level = matrix.getTarget(slot.levelTarget);
        CHECK(level.value == expected.level);
        const float depth = model.depth(i, active);
        CHECK(level.scale == doctest::Approx(static_cast<double>(depth)));
        CHECK(level.clampMaximum == (depth > 0.0f ? level.scale : 0.0f));
        CHECK(level.clampMinimum == (depth > 0.0f ? 0.0f : level.scale));
        CHECK(std::abs(level.base.getTarget() - expected.level * level.scale) <= 1.2e-7f);
    }
    for (int target = 0; target < numModulationTargets; ++target) {
        std::vector<int> listed;
        for (const ModulationMatrix::Slot* slot : matrix.getTarget(target).slots)
            listed.push_back(slot->index);
        CHECK(listed == aimed[static_cast<std::size_t>(target)]);
    }
}

/// All that the base class answers, from its own walks, against the matrix' lists and states.
void checkControllersAgree(ModulationMatrix::Controller& one, ModulationMatrix::Controller& two,
                           Rng& rng) {
    for (int slot = 0; slot < numModulationSlots; ++slot) {
        CHECK(one.isValid(slot) == two.isValid(slot));
        CHECK(one.closesLoop(slot) == two.closesLoop(slot));
    }
    CHECK(one.findFreeSlot() == two.findFreeSlot());
    const int target = rng.integer(0, numModulationTargets - 1);
    const std::vector<int> targets = {target, rng.integer(83, 194), rng.integer(83, 194), target};
    std::vector<int> found, expected;
    one.findSlotsOfTarget(target, found);
    two.findSlotsOfTarget(target, expected);
    CHECK(found == expected);
    one.findSlotsOfTargets(targets, found);
    two.findSlotsOfTargets(targets, expected);
    CHECK(found == expected);
}

TEST_CASE("Slots: any sequence of changes leaves what a model works out anew") {
    Rng rng = Rng::fromEnvironment();
    CAPTURE(rng.seed());
    for (const int numSlots : {5, 12, numModulationSlots}) {
        CAPTURE(numSlots);
        MatrixRig rig;
        SlotModel model{rig.shape};
        ModelController modelled(&model);
        ModulationMatrix::Controller& controller = rig.matrix.getController();
        int numChecks = 0, numLoops = 0;
        for (int step = 0; step < 3500; ++step) {
            const SlotChange change = SlotChange::random(rng, numSlots);
            const auto report = guarded([&] { change.apply(controller); });
            CHECK_MESSAGE(report.isClean(), report);
            change.apply(modelled);
            if (step % 100 == 0) rig.play({1, 30});
            if (step % (numSlots < 20 ? 1 : 25) != 0) continue;
            checkAgainstModel(rig.matrix, model);
            checkControllersAgree(controller, modelled, rng);
            for (int slot = 0; slot < numSlots; ++slot)
                numLoops += controller.closesLoop(slot) ? 1 : 0;
            ++numChecks;
        }
        CHECK(numLoops > numChecks / 4);  // they are what this is about
    }
}

TEST_CASE("Slots: the sound depends on the settings, not on the order in which they came") {
    Rng rng = Rng::fromEnvironment();
    CAPTURE(rng.seed());
    for (int round = 0; round < 8; ++round) {
        CAPTURE(round);
        MatrixRig lived;
        SlotModel model{lived.shape};
        ModelController modelled(&model);
        for (int step = 0; step < 600; ++step) {
            const SlotChange change = SlotChange::random(rng, 20);
            change.apply(lived.matrix.getController());
            change.apply(modelled);
            if (step % 40 == 0) lived.play({7});
        }
        std::vector<SlotChange> settings;
        for (int slot = 0; slot < 20; ++slot) {
            const SlotModel::Slot& s = model.slots[static_cast<std::size_t>(slot)];
            settings.push_back({slot, SlotChange::Source, static_cast<float>(s.source)});
            settings.push_back({slot, SlotChange::Target, static_cast<float>(s.target)});
            settings.push_back({slot, SlotChange::Bypassed, s.bypassed ? 1.0f : 0.0f});
            settings.push_back({slot, SlotChange::Inverted, s.inverted ? 1.0f : 0.0f});
            settings.push_back({slot, SlotChange::Level, s.level});
        }
        for (std::size_t i = settings.size() - 1; i > 0; --i)
            std::swap(settings[i],
                      settings[static_cast<std::size_t>(rng.integer(0, static_cast<int>(i)))]);
        MatrixRig loaded;
        for (const SlotChange& change : settings)
            change.apply(loaded.matrix.getController());

        // Where the one is on its time line, the other one has to be, since the sources move.
        lived.environment.reset(wave::Environment::ResetMode::MarkOnly);
        loaded.play({static_cast<int>(lived.environment.getPosition())});
        loaded.environment.reset(wave::Environment::ResetMode::MarkOnly);
        CHECK(lived.play({64, 64}) == loaded.play({64, 64}));
    }
}

TEST_CASE("Slots: the one that closes a loop is left out, until the loop opens") {
    MatrixRig rig;
    rig.connect(0, xlfo1, xlfo1Freq);
    CHECK_FALSE(rig.isActive(0));  // a source can't drive its own controls
    rig.matrix.setSlotTarget(0, xlfo2Freq);
    CHECK(rig.isActive(0));
    rig.connect(1, xlfo2, xlfo1Freq);
    CHECK(rig.isActive(0));
    CHECK_FALSE(rig.isActive(1));
    rig.matrix.setSlotSource(0, -1);
    CHECK(rig.isActive(1));

    rig.connect(2, xy1, rig.shape.levelTargetOf(2));
    CHECK_FALSE(rig.isActive(2));  // nor a slot its own level
    rig.connect(2, xlfo1, rig.shape.levelTargetOf(3));
    rig.connect(3, xy1, rig.shape.levelTargetOf(1));
    CHECK_FALSE(rig.isActive(3));  // 1 moves XLFO 1, which moves 3's level, which would move 1's
    rig.matrix.setSlotBypassed(1, true);
    CHECK_FALSE(rig.isActive(1));
    CHECK_FALSE(rig.isActive(3));  // bypass decides nothing for the others
}

TEST_CASE("Slots: a level on its way to 0 does not pass the limits of a new depth") {
    MatrixRig rig;
    const int level = rig.shape.levelTargetOf(0);
    const auto levels = [&] { return rig.play({16})[static_cast<std::size_t>(level)]; };
    rig.connect(0, xy1, drive, 0.8f);
    rig.play({16});
    rig.matrix.setTargetValue(level, 0.0f);
    CHECK(levels().back() > 0.5f);
    rig.matrix.setSlotInverted(0, true);
    CHECK(levels() == std::vector<float>(16));
}

TEST_CASE("Slots: a bypassed slot comes back with all it had") {
    MatrixRig rig;
    rig.matrix.setTargetValue(drive, 0.5f);
    rig.connect(4, xy1, drive, 0.25f);
    rig.matrix.setSlotInverted(4, true);
    const auto before = rig.play({static_cast<int>(MatrixRig::period)});
    rig.matrix.setSlotBypassed(4, true);
    CHECK(rig.play({MatrixRig::period}) != before);
    rig.matrix.setSlotBypassed(4, false);
    CHECK(rig.play({MatrixRig::period}) == before);
}

}  // namespace
}  // namespace cinder
