#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plugin/history/CurrentPreset.h"
#include "plugin/history/HistorySubject.h"

namespace cinder {

/// Snapshots of a plug-in: all values and the preset's identity, so that going back is a full
/// restoration and never the inverse of an operation.
/// Shape   a fixed number of records; one that was never stored restores no value
/// State   the records, 899 floats and three strings each once stored. All [ui]
class StateList {
public:
    struct State {
        std::string description;
        PresetIdentity preset;
        std::int32_t compareSlot = 0;  ///< the side of the A/B pair at the time
        std::vector<float> values;     ///< in the order of the ids
    };

    StateList(HistorySubject& subject, int size)
        : subject(subject), states(static_cast<std::size_t>(size)) {}

    void store(int index, const std::string& description);
    /// One update bracket that asks the host to look anew. The preset's flag comes back as well:
    /// who undoes the first edit has an unmodified preset again.
    void restore(int index);

    const State& at(int index) const { return states[static_cast<std::size_t>(index)]; }
    int size() const { return static_cast<int>(states.size()); }

private:
    HistorySubject& subject;
    std::vector<State> states;
};

}  // namespace cinder
