#include "modulation/slots/RoutingModel.h"

#include <algorithm>
#include <utility>

namespace cinder::test {

namespace {

constexpr struct {
    int firstTarget, targets, firstSource, sources;
} numbers[] = {{5, 13, 0, 0}, {0, 0, 0, 2}, {83, 3, 8, 1}, {145, 1, 0, 0}};

}  // namespace

RoutingModel::RoutingModel() {
    lists[Bands].push_back(0);
}

const std::vector<int>& RoutingModel::members(List list) const {
    return lists[list];
}

int RoutingModel::indexOf(const End& end) const {
    const std::vector<int>& list = lists[end.list];
    return static_cast<int>(std::find(list.begin(), list.end(), end.identity) - list.begin());
}

int RoutingModel::sourceNumber(const End& source) const {
    if (source.identity < 0) return -1;
    const auto& list = numbers[source.list];
    return list.firstSource + indexOf(source) * list.sources + source.place;
}

int RoutingModel::targetNumber(const End& target) const {
    if (target.identity < 0) return -1;
    if (target.list < 0) return target.place;
    const auto& list = numbers[target.list];
    return list.firstTarget + indexOf(target) * list.targets + target.place;
}

int RoutingModel::insert(List list, int index) {
    const int identity = ++numIdentities;
    lists[list].insert(lists[list].begin() + index, identity);
    if (list == Slots) {
        Slot added = index > 0 ? slot(index - 1) : count(Slots) > 1 ? slot(0) : Slot();
        added.identity = identity;
        slots.insert(slots.begin() + index, added);
    }
    return identity;
}

std::vector<bool> RoutingModel::concernedBy(
    const std::function<bool(const Slot&)>& isConcerned) const {
    std::vector<bool> concerned(slots.size());
    const auto isAimedAtOne = [&](const Slot& slot) {
        return slot.target.list == Slots &&
               concerned[static_cast<std::size_t>(indexOf(slot.target))];
    };
    for (std::size_t pass = 0; pass <= slots.size(); ++pass)
        for (std::size_t i = 0; i < slots.size(); ++i)
            if (isConcerned(slots[i]) || isAimedAtOne(slots[i])) concerned[i] = true;
    return concerned;
}

void RoutingModel::remove(List list, int index) {
    const int identity = lists[list][static_cast<std::size_t>(index)];
    const auto isOf = [=](const End& end) { return end.list == list && end.identity == identity; };
    const auto concerned = concernedBy([&](const Slot& slot) {
        return isOf(slot.source) || isOf(slot.target) ||
               (list == Slots && slot.identity == identity);
    });
    for (std::size_t i = slots.size(); i-- > 0;)
        if (concerned[i]) slots.erase(slots.begin() + static_cast<std::ptrdiff_t>(i));
    std::erase(lists[list], identity);
    lists[Slots].clear();
    for (const Slot& slot : slots)
        lists[Slots].push_back(slot.identity);
}

void RoutingModel::clearSlot(int index) {
    const int identity = slot(index).identity;
    const auto concerned = concernedBy([=](const Slot& slot) { return slot.identity == identity; });
    for (std::size_t i = 0; i < slots.size(); ++i)
        if (concerned[i]) slots[i] = {slots[i].identity};
}

void RoutingModel::swapSlots(int a, int b) {
    std::swap(slot(a), slot(b));
    std::swap(lists[Slots][static_cast<std::size_t>(a)], lists[Slots][static_cast<std::size_t>(b)]);
}

int RoutingModel::sortSlots(int number, int selected) {
    const auto key = [this](int index) {
        return std::pair(static_cast<unsigned>(sourceNumber(slot(index).source)),
                         static_cast<unsigned>(targetNumber(slot(index).target)));
    };
    const int identity = slot(selected).identity;
    for (int i = 1; i < number; ++i)
        for (int k = i; k > 0 && key(k) < key(k - 1); --k)
            swapSlots(k - 1, k);
    return indexOf({Slots, identity});
}

}  // namespace cinder::test
