#pragma once

#include "plugin/history/StateList.h"

namespace cinder {

/// The A/B pair. The side that is heard is the present itself; its record is brought up to date
/// when it is left.
/// State   both records, which side is heard, and whether there is something to copy. All [ui]
class CompareStates {
public:
    explicit CompareStates(HistorySubject& subject) : states(subject, 2) {}

    /// Once, when the first window opens: both sides become the present.
    void initialise();
    /// Stores the present into the side that is left. Restores nothing.
    void switchTo(int side);
    /// `switchTo` the other side, and restores it.
    void toggle();
    /// The other side becomes the present.
    void copyToOther();

    int getCurrent() const { return current; }  ///< 0 is A, 1 is B
    /// The present differs from the other side, or may do so.
    bool isDirty() const { return dirty; }
    void markDirty() { dirty = true; }
    bool isInitialised() const { return initialised; }

private:
    int other() const { return 1 - current; }

    StateList states;
    int current = 0;
    bool dirty = false;
    bool initialised = false;
};

}  // namespace cinder
