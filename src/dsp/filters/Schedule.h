#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "core/Realtime.h"

namespace cinder {

/// What holds for how many of the next samples: runs of samples with the same set of values.
/// Shape   sets of up to `maxValues` values, `width` of them in use
/// Range   one entry less than the capacity; when more are appended the last set but one holds on
///         in place of the new one, so that no sample goes without
/// State   the entries, until clear()
template <class Value>
class Schedule {
public:
    Schedule(int capacity, int maxValues)
        : counts(static_cast<std::size_t>(std::max(capacity, 2))),
          values(counts.size() * static_cast<std::size_t>(maxValues)) {}

    /// The number of values in a set; empties it. [audio]
    void setWidth(int numValues) noexcept CINDER_REALTIME {
        width = static_cast<std::size_t>(numValues);
        clear();
    }
    int getWidth() const { return static_cast<int>(width); }

    /// The set holds for the next `numSamples`. [audio]
    void append(const Value* set, int numSamples) noexcept CINDER_REALTIME {
        if (numSamples <= 0) return;
        if (numEntries > 0 && std::equal(set, set + width, valuesAt(numEntries - 1))) {
            counts[numEntries - 1] += numSamples;
            return;
        }
        std::copy_n(set, width, values.data() + numEntries * width);
        counts[numEntries] = numSamples;
        if (++numEntries < counts.size()) return;
        --numEntries;
        counts[numEntries - 1] += numSamples;
    }
    void clear() noexcept CINDER_REALTIME { numEntries = 0; }

    std::size_t size() const { return numEntries; }
    int countAt(std::size_t entry) const { return counts[entry]; }
    const Value* valuesAt(std::size_t entry) const { return values.data() + entry * width; }

private:
    std::vector<int> counts;
    std::vector<Value> values;
    std::size_t width = 1;
    std::size_t numEntries = 0;
};

}  // namespace cinder
