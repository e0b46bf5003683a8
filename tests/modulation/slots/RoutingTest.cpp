#include <doctest/doctest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <numeric>

#include "modulation/slots/RoutingModel.h"
#include "modulation/slots/SlotOperations.h"
#include "modulation/slots/SlotTree.h"
#include "support/RealtimeGuard.h"
#include "support/Rng.h"

namespace cinder::test {
namespace {

using List = RoutingModel::List;
using End = RoutingModel::End;

/// Both halves and the model, of which the first is edited and the others follow.
class Rig {
public:
    explicit Rig(Rng& rng) : rng(rng) {
        applyAll(processor, false);
        setTag(RoutingModel::Bands, 0, 0);
    }

    void step();
    void checkParameters();
    void checkMatrix();

private:
    AbstractParameterSetList& list(List id) {
        AbstractParameterSetList* const lists[] = {&plugin.bands, &plugin.xys, &plugin.xlfos,
                                                   &plugin.slots};
        return *lists[id];
    }
    ModulationMatrix::Controller& controller() { return *plugin.getController(); }
    int any(int count) { return rng.integer(0, count - 1); }

    void setTag(List id, int index, int identity);
    End randomSource();
    End randomTarget();
    void addSlot();
    void editSlot(int slot);
    void arrangeSlots(int slot);
    void insert(List id);
    void remove(List id);
    void applyAll(SlotTree& tree, bool shuffled);
    void deliver();
    bool isAcyclic();

    Rng& rng;
    SlotTree plugin{false}, processor{true};
    RoutingModel model;
};

void Rig::setTag(List id, int index, int identity) {
    const auto tag = static_cast<float>(identity);
    list(id).set(index)->parameter(0)->setValue(tag, 0);
    if (id == RoutingModel::Bands) plugin.bandExtensions.set(index)->tag.setValue(tag, 0);
}

End Rig::randomSource() {
    const List id = any(3) == 0 ? RoutingModel::XYs : RoutingModel::XLFOs;
    if (model.count(id) == 0 || any(16) == 0) return {};
    const int identity = model.members(id)[static_cast<std::size_t>(any(model.count(id)))];
    return {id, identity, id == RoutingModel::XYs ? any(2) : 0};
}

End Rig::randomTarget() {
    constexpr List ids[] = {RoutingModel::Bands, RoutingModel::XLFOs, RoutingModel::XLFOs,
                            RoutingModel::Slots, RoutingModel::Slots};
    const List id = ids[any(static_cast<int>(std::size(ids)))];
    if (any(16) == 0) return {};
    if (model.count(id) == 0) return {-1, 0, any(5)};
    const int identity = model.members(id)[static_cast<std::size_t>(any(model.count(id)))];
    constexpr int targets[] = {13, 0, 3, 1};
    return {id, identity, any(targets[id])};
}

void Rig::addSlot() {
    const End source = randomSource(), target = randomTarget();
    const int slot =
        slots::addSlot(controller(), model.sourceNumber(source), model.targetNumber(target));
    const bool fits = model.count(RoutingModel::Slots) < 50;
    CHECK(slot == (fits ? model.count(RoutingModel::Slots) : -1));
    if (!fits) {
        CHECK(plugin.changes.empty());
        return;
    }
    const int identity = model.insert(RoutingModel::Slots, slot);
    model.slot(slot) = {identity, source, target, false, false, 0.16f};
}

void Rig::editSlot(int slot) {
    RoutingModel::Slot& edited = model.slot(slot);
    switch (any(5)) {
        case 0:
            edited.source = randomSource();
            return controller().setSource(slot, model.sourceNumber(edited.source));
        case 1:
            edited.target = randomTarget();
            return controller().setTarget(slot, model.targetNumber(edited.target));
        case 2:
            edited.bypassed = !edited.bypassed;
            return controller().setBypassed(slot, edited.bypassed);
        case 3:
            edited.inverted = !edited.inverted;
            return controller().setInverted(slot, edited.inverted);
        default:
            edited.level = static_cast<float>(rng.real(0.0, 1.0));
            return controller().setLevel(slot, edited.level);
    }
}

void Rig::arrangeSlots(int slot) {
    const int count = model.count(RoutingModel::Slots), other = any(count);
    switch (any(8)) {
        case 0: {
            std::vector<int> cleared;
            slots::clearSlot(controller(), slot, cleared);
            return model.clearSlot(slot);
        }
        case 1: {
            slots::copySlot(controller(), slot, other);
            const int identity = model.slot(other).identity;
            model.slot(other) = model.slot(slot);
            model.slot(other).identity = identity;
            return;
        }
        case 2:
            CHECK(slots::sortSlots(controller(), count, slot) == model.sortSlots(count, slot));
            return;
        default:
            slots::swapSlots(controller(), slot, other);
            return model.swapSlots(slot, other);
    }
}

void Rig::insert(List id) {
    const int index = any(model.count(id) + 1);
    list(id).insertSet(index);
    if (model.count(id) == list(id).setCount()) {
        CHECK(plugin.changes.empty());
        return;
    }
    const int identity = model.insert(id, index);
    if (id != RoutingModel::Slots) setTag(id, index, identity);
}

void Rig::remove(List id) {
    if (model.count(id) == 0) return;
    const int index = any(model.count(id));
    list(id).removeSet(index);
    if (id == RoutingModel::Bands && model.count(id) == 1)
        CHECK(plugin.changes.empty());
    else
        model.remove(id, index);
}

void Rig::step() {
    const int numSlots = model.count(RoutingModel::Slots), kind = any(20);
    const auto id = static_cast<List>(any(RoutingModel::numLists));
    if (kind < 7 || numSlots == 0)
        addSlot();
    else if (kind < 11)
        editSlot(any(numSlots));
    else if (kind < 14)
        arrangeSlots(any(numSlots));
    else if (kind < 17)
        insert(id);
    else
        remove(id);
    CHECK(plugin.depth == 0);
    deliver();
}

void Rig::deliver() {
    const auto report = guarded([this] {
        for (const auto& [id, value] : plugin.changes)
            processor.receive(id, value);
    });
    CHECK_MESSAGE(report.isClean(), report);
    plugin.changes.clear();
}

void Rig::applyAll(SlotTree& tree, bool shuffled) {
    std::vector<int> order(static_cast<std::size_t>(plugin.parameterCount()));
    std::iota(order.begin(), order.end(), 0);
    for (int i = plugin.parameterCount() - 1; shuffled && i > 0; --i)
        std::swap(order[static_cast<std::size_t>(i)], order[static_cast<std::size_t>(any(i + 1))]);
    for (const int id : order)
        tree.receive(id, plugin.parameter(id)->value());
}

/// Every parameter is what the model says, and what lies behind the end of a list is untouched.
void Rig::checkParameters() {
    for (const List id :
         {RoutingModel::Bands, RoutingModel::XYs, RoutingModel::XLFOs, RoutingModel::Slots}) {
        const int count = model.count(id);
        REQUIRE(list(id).activeCount() == count);
        for (int i = 0; i < list(id).setCount(); ++i) {
            const PluginParameterSet& set = *list(id).set(i);
            for (int k = 0; i >= count && k < set.parameterCount(); ++k)
                CHECK(set.parameter(k)->value() == set.parameter(k)->defaultValue());
            if (id == RoutingModel::Slots) continue;
            const int tag = i < count ? model.members(id)[static_cast<std::size_t>(i)] : 0;
            CHECK(static_cast<int>(set.parameter(0)->value()) == tag);
            if (id == RoutingModel::Bands)
                CHECK(static_cast<int>(plugin.bandExtensions.set(i)->parameter(0)->value()) == tag);
        }
    }
    for (int i = 0; i < model.count(RoutingModel::Slots); ++i) {
        INFO("slot " << i);
        const RoutingModel::Slot& slot = model.slot(i);
        REQUIRE(controller().getSource(i) == model.sourceNumber(slot.source));
        REQUIRE(controller().getTarget(i) == model.targetNumber(slot.target));
        REQUIRE(controller().isBypassed(i) == slot.bypassed);
        REQUIRE(controller().isInverted(i) == slot.inverted);
        REQUIRE(controller().getLevel(i) == doctest::Approx(slot.level).epsilon(1e-5));
    }
}

/// Taking away the active slots that no other one modulates, again and again, leaves none.
bool Rig::isAcyclic() {
    const ModulationMatrixShape& shape = controller().getShape();
    std::vector<int> left;
    for (int i = 0; i < shape.slotCount; ++i)
        if (controller().isValid(i)) left.push_back(i);
    const auto modulates = [&](int modulator, int slot) {
        const auto& own = shape.source(controller().getSource(slot)).ownTargets;
        const int target = controller().getTarget(modulator);
        return target == shape.levelTargetOf(slot) ||
               std::find(own.begin(), own.end(), target) != own.end();
    };
    for (std::size_t before = 0; before != left.size();) {
        const std::vector<int> all = left;
        before = all.size();
        std::erase_if(left, [&](int slot) {
            return std::none_of(all.begin(), all.end(),
                                [&](int modulator) { return modulates(modulator, slot); });
        });
    }
    return left.empty();
}

/// The matrix has heard of everything, and it does not matter in which order.
void Rig::checkMatrix() {
    SlotTree fresh(true);
    applyAll(fresh, true);
    ModulationMatrix &followed = *processor.getMatrix(), &loaded = *fresh.getMatrix();
    CHECK(isAcyclic());
    for (int i = 0; i < 50; ++i) {
        INFO("slot " << i);
        CHECK(followed.getController().isValid(i) == controller().isValid(i));
        CHECK(followed.getController().closesLoop(i) == controller().closesLoop(i));
        for (const ModulationMatrix* matrix : {&followed, &loaded}) {
            const ModulationMatrix::Slot& slot = matrix->getSlot(i);
            CHECK(slot.source == controller().getSource(i));
            CHECK(slot.target == controller().getTarget(i));
            CHECK(slot.bypassed == controller().isBypassed(i));
            CHECK(slot.inverted == controller().isInverted(i));
            CHECK(slot.isActive() == controller().isValid(i));
            CHECK(matrix->getTarget(slot.levelTarget).value == controller().getLevel(i));
        }
        const ModulationMatrix::Target& level = followed.getTarget(145 + i);
        if (!followed.getSlot(i).isActive()) continue;
        CHECK(level.scale == loaded.getTarget(145 + i).scale);
        CHECK(level.base.getTarget() == loaded.getTarget(145 + i).base.getTarget());
    }
}

TEST_CASE("Routing: 10,000 edits keep every slot with what it connects, in both halves") {
    Rng rng = Rng::fromEnvironment();
    Rig rig(rng);
    for (int i = 0; i < 10000; ++i) {
        INFO("seed " << rng.seed() << ", step " << i);
        rig.step();
        rig.checkParameters();
        if (i % 50 == 0) rig.checkMatrix();
    }
}

}  // namespace
}  // namespace cinder::test
