#pragma once

#include <cstddef>
#include <vector>

#include "core/Realtime.h"

namespace cinder {

/// A set of target indices in the order of insertion, emptied in constant time: an index is in it
/// where its place lies inside the list and holds that index.
class VisitedTargets {
public:
    explicit VisitedTargets(int targetCount)
        : list(static_cast<std::size_t>(targetCount)),
          places(static_cast<std::size_t>(targetCount)) {}

    void clear() noexcept CINDER_REALTIME { count = 0; }
    bool contains(int target) const noexcept CINDER_REALTIME {
        const int place = places[static_cast<std::size_t>(target)];
        return place < count && list[static_cast<std::size_t>(place)] == target;
    }
    void add(int target) noexcept CINDER_REALTIME {
        if (contains(target)) return;
        list[static_cast<std::size_t>(count)] = target;
        places[static_cast<std::size_t>(target)] = count++;
    }
    int size() const { return count; }
    int operator[](int place) const { return list[static_cast<std::size_t>(place)]; }

private:
    int count = 0;
    std::vector<int> list;
    std::vector<int> places;
};

}  // namespace cinder
