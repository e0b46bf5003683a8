#pragma once

#include <functional>
#include <vector>

namespace cinder::test {

/// What routing means, without numbers: members of lists know each other by identities that they
/// keep wherever they move, and a number is looked up when it is asked for.
class RoutingModel {
public:
    enum List { Bands, XYs, XLFOs, Slots, numLists };
    /// One end of a connection.
    struct End {
        int list = -1;  // -1 with an identity: a global target; without: none
        int identity = -1;
        int place = 0;  // among the member's sources or targets

        bool operator==(const End&) const = default;
    };
    struct Slot {
        int identity = 0;
        End source = {}, target = {};
        bool bypassed = false, inverted = false;
        float level = 0.0f;
    };

    RoutingModel();

    int count(List list) const { return static_cast<int>(members(list).size()); }
    const std::vector<int>& members(List list) const;
    Slot& slot(int index) { return slots[static_cast<std::size_t>(index)]; }
    const Slot& slot(int index) const { return slots[static_cast<std::size_t>(index)]; }
    /// As the product counts them; -1 for none.
    int sourceNumber(const End& source) const;
    int targetNumber(const End& target) const;

    int insert(List list, int index);  ///< answers with the new identity
    void remove(List list, int index);
    void clearSlot(int index);
    void swapSlots(int a, int b);
    int sortSlots(int number, int selected);

private:
    int indexOf(const End& end) const;
    /// The slots that one end concerns, and all that modulate their levels.
    std::vector<bool> concernedBy(const std::function<bool(const Slot&)>& isConcerned) const;

    std::vector<int> lists[numLists];  // identities; that of the slots follows `slots`
    std::vector<Slot> slots;
    int numIdentities = 0;
};

}  // namespace cinder::test
