#include <doctest/doctest.h>

#include <cmath>

#include "modulation/slots/SlotOperations.h"
#include "modulation/slots/SlotTree.h"
#include "support/Rng.h"

namespace cinder::test {
namespace {

constexpr int driveOfBand1 = 7, bassOfBand1 = 11;
constexpr int levelOf(int slot) {
    return 145 + slot;
}

TEST_CASE("Slots: parameters as the user sees them, and as a host without a matrix applies them") {
    SlotTree tree(false);
    CHECK(tree.slots.activeCount() == 0);
    CHECK(tree.slots.firstId() + 1 == tree.slots.slot(0).source.getId());
    const PluginParameterSet& last = *tree.slots.set(49);
    const struct {
        const char *name, *text;
        float maximum;
        const char* maximumText;
    } rows[] = {
        {"Slot 50 Source", "< Source >", 34.0f, "MIDI 10"},
        {"Slot 50 Level", "0.160", 1.0f, "1.000"},
        {"Slot 50 Bypassed", "Normal", 1.0f, "Bypassed"},
        {"Slot 50 Inverted", "Normal", 1.0f, "Inverted"},
        {"Slot 50 Target", "< Target >", 195.0f, "Slot 50 Level"},
    };
    REQUIRE(last.parameterCount() == 5);
    for (int i = 0; i < 5; ++i) {
        const AbstractPluginParameter& parameter = *last.parameter(i);
        CHECK(parameter.getName() == rows[i].name);
        CHECK(parameter.text(parameter.defaultValue()) == rows[i].text);
        CHECK(parameter.maximum() == rows[i].maximum);
        CHECK(parameter.text(parameter.maximum()) == rows[i].maximumText);
        CHECK(tree.groupName(parameter.getGroup()) == "Slot 50");
        last.parameter(i)->applyValue(parameter.maximum());
    }
    CHECK(tree.getController()->defaultLevel == 0.16f);
}

TEST_CASE("Slots: the 51st finds no room and changes nothing; one bracket for each that does") {
    SlotTree tree(false);
    ModulationMatrix::Controller& controller = *tree.getController();
    for (int i = 0; i < 50; ++i) {
        CHECK(slots::addSlot(controller, 0, driveOfBand1) == i);
        CHECK(tree.numBrackets == i + 1);
    }
    tree.changes.clear();
    CHECK(slots::addSlot(controller, 0, driveOfBand1) == -1);
    CHECK(slots::sortSlots(controller, 50, 3) == 3);  // nothing to sort
    slots::swapSlots(controller, 7, 7);
    CHECK(tree.changes.empty());
    CHECK(tree.numBrackets <= 51);
    CHECK(tree.numOutside == 0);
}

TEST_CASE("Slots: clearing and removing go along chains and end in circles") {
    SlotTree tree(false);
    ModulationMatrix::Controller& controller = *tree.getController();
    const auto connect = [&](std::initializer_list<int> targets) {
        while (tree.slots.activeCount() > 0)
            tree.slots.removeSet(0);
        for (const int target : targets)
            slots::addSlot(controller, 0, target);
    };
    std::vector<int> cleared;
    connect({driveOfBand1, levelOf(0), levelOf(1), bassOfBand1});
    slots::clearSlot(controller, 0, cleared);
    CHECK(cleared == std::vector<int>{0, 1, 2});
    CHECK(controller.getTarget(3) == bassOfBand1);

    cleared.clear();
    connect({levelOf(1), levelOf(2), levelOf(0), levelOf(2), bassOfBand1});
    slots::clearTarget(controller, levelOf(2), cleared);
    CHECK(cleared == std::vector<int>{1, 0, 2, 3});

    connect({levelOf(2), levelOf(0), driveOfBand1, bassOfBand1, levelOf(3)});
    tree.slots.removeSet(2);
    CHECK(tree.slots.activeCount() == 2);
    CHECK(controller.getTarget(0) == bassOfBand1);
    CHECK(controller.getTarget(1) == levelOf(0));

    connect({levelOf(1), levelOf(0), bassOfBand1});
    tree.slots.removeSet(1);
    CHECK(tree.slots.activeCount() == 1);
    CHECK(controller.getTarget(0) == bassOfBand1);

    // A host may have lowered the count under slots that are connected.
    connect({driveOfBand1, levelOf(0), bassOfBand1});
    tree.slots.numActive.setValue(1.0f, 0);
    tree.bands.insertSet(0);
    tree.bands.removeSet(1);
    CHECK(tree.slots.activeCount() == 0);
    for (int i = 0; i < 3; ++i)
        CHECK(tree.slots.slot(i).level.value() == 0.5f);
    CHECK(controller.getTarget(2) == -1);
}

TEST_CASE("Slots: the operations do the same to a matrix as to its parameters") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    SlotTree plugin(false), processor(true);
    plugin.slots.numActive.setValue(50.0f, 0);
    for (int id = 0; id < plugin.parameterCount(); ++id)
        processor.receive(id, plugin.parameter(id)->value());
    ModulationMatrix::Controller* const both[] = {plugin.getController(),
                                                  &processor.getMatrix()->getController()};
    for (int step = 0; step < 2000; ++step) {
        const int a = rng.integer(0, 49), b = rng.integer(0, 49), kind = rng.integer(0, 9);
        const int source = rng.integer(-1, 33), target = rng.integer(-1, 194);
        std::vector<int> results[2];
        for (int i = 0; i < 2; ++i) {
            ModulationMatrix::Controller& controller = *both[i];
            if (kind < 5) {
                controller.setSource(a, source);
                controller.setTarget(a, b > 25 ? levelOf(b) : target);
                controller.setInverted(b, kind > 2);
                controller.setLevel(a, 0.02f * static_cast<float>(b));
            } else if (kind == 5) {
                slots::copySlot(controller, a, b);
            } else if (kind == 6) {
                results[i].push_back(slots::sortSlots(controller, a, b));
            } else if (kind == 7) {
                slots::clearTarget(controller, levelOf(a), results[i]);
            } else {
                slots::swapSlots(controller, a, b);
            }
        }
        INFO("step " << step << ", kind " << kind);
        REQUIRE(results[0] == results[1]);
        for (int slot = 0; slot < 50; ++slot) {
            INFO("slot " << slot);
            REQUIRE(both[0]->getSource(slot) == both[1]->getSource(slot));
            REQUIRE(both[0]->getTarget(slot) == both[1]->getTarget(slot));
            REQUIRE(both[0]->isInverted(slot) == both[1]->isInverted(slot));
            REQUIRE(std::abs(both[0]->getLevel(slot) - both[1]->getLevel(slot)) < 1e-6f);
        }
    }
}

}  // namespace
}  // namespace cinder::test
