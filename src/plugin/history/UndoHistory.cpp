#include "plugin/history/UndoHistory.h"

#include <algorithm>

namespace cinder {

void UndoHistory::open() {
    if (position == 0 && undoCount == 0 && redoCount == 0) states.store(position, "Initial state");
    compareStates.initialise();
}

void UndoHistory::commit() {
    push("");
    compareStates.markDirty();
}

void UndoHistory::toggleCompare() {
    compareStates.toggle();
    push("");
}

void UndoHistory::push(const std::string& description) {
    position = (position + 1) % states.size();
    states.store(position, description);
    redoCount = 0;
    undoCount = std::min(undoCount + 1, maxSteps);
}

void UndoHistory::move(int delta) {
    position = (states.size() + delta + position) % states.size();
    if (states.at(position).values.empty()) return;  // no window was open before the first step
    compareStates.switchTo(states.at(position).compareSlot);
    states.restore(position);
    compareStates.markDirty();
}

bool UndoHistory::undo() {
    if (undoCount < 1) return false;
    move(-1);
    --undoCount;
    redoCount = std::min(redoCount + 1, maxSteps);
    return true;
}

bool UndoHistory::redo() {
    if (redoCount < 1) return false;
    move(1);
    undoCount = std::min(undoCount + 1, maxSteps);
    --redoCount;
    return true;
}

}  // namespace cinder
