#pragma once

#include <string>

#include "plugin/history/CompareStates.h"

namespace cinder {

/// The last hundred steps of the user, and the way back and forth through them.
///
///     ring    ... a step | a step | the present | undone | undone ...
///             <- undoCount steps ->             <- redoCount ->
///
/// Shape   one record more than there are steps, so that the oldest step still has the state in
///         front of it
/// State   the ring and the place of the present in it. Nothing ever clears it: a window may close
///         and open again, and a host may bring a new state. All [ui]
class UndoHistory {
public:
    static constexpr int maxSteps = 100;

    UndoHistory(HistorySubject& subject, CompareStates& compareStates)
        : compareStates(compareStates), states(subject, maxSteps + 1) {}

    /// When a window opens: the first one stores what all undoing leads back to.
    void open();
    /// The user has done something: the present becomes a step.
    void commit();
    /// Changes the side of the A/B pair, which is a step like any other.
    void toggleCompare();
    /// False, and nothing happens, where no step is left.
    bool undo();
    bool redo();

    /// The present becomes a step; what had been undone is gone.
    void push(const std::string& description);
    /// One place on, or one back with -1. The A/B pair moves along.
    void move(int delta);

    int getUndoCount() const { return undoCount; }
    int getRedoCount() const { return redoCount; }
    int getPosition() const { return position; }
    const StateList& getStates() const { return states; }

private:
    CompareStates& compareStates;
    StateList states;
    int redoCount = 0;
    int undoCount = 0;
    int position = 0;
};

}  // namespace cinder
