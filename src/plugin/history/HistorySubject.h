#pragma once

namespace cinder {

class CurrentPreset;
class GenericParameterOwner;

/// What has a past: parameters and the preset that they came from.
class HistorySubject {
public:
    virtual GenericParameterOwner& historyParameters() = 0;
    virtual CurrentPreset& getCurrentPreset() = 0;
    /// The side of the A/B pair that is heard.
    virtual int compareSlot() const = 0;
    /// A stored state is back. `fileChanged`: it came from another preset file.
    virtual void stateRestored(bool fileChanged) = 0;

protected:
    ~HistorySubject() = default;
};

}  // namespace cinder
