#include "plugin/history/CompareStates.h"

namespace cinder {

void CompareStates::initialise() {
    if (initialised) return;
    states.store(current, "");
    copyToOther();
    initialised = true;
}

void CompareStates::switchTo(int side) {
    if (side == current) return;
    states.store(current, "");
    current = side;
}

void CompareStates::toggle() {
    initialise();  // without a window nobody may have done so
    switchTo(other());
    states.restore(current);
}

void CompareStates::copyToOther() {
    states.store(other(), "");
    dirty = false;
}

}  // namespace cinder
