#include "core/UpdatedObject.h"

#include <utility>

namespace cinder {

void UpdatedObject::update() {
    // By index: a handler may add events. The flag goes first: a handler may open a bracket of its
    // own, at whose end the update would call it again, and so on.
    for (std::size_t i = 0; i < deferredEvents.size(); ++i) {
        DeferredEvent& deferred = deferredEvents[i];
        if (std::exchange(deferred.pending, false)) deferred.event.fire(deferred.argument);
    }
}

void UpdatedObject::requestUpdate() {
    if (updateDepth > 0)
        updateState = State::Pending;
    else if (updateState != State::Updating)
        runUpdate();
}

void UpdatedObject::endUpdate() {
    if (--updateDepth == 0 && updateState == State::Pending) runUpdate();
}

std::size_t UpdatedObject::addDeferredEvent() {
    deferredEvents.emplace_back();
    return deferredEvents.size() - 1;
}

void UpdatedObject::deferEvent(std::size_t index, NotifyEvent::Argument argument) {
    deferredEvents[index].pending = true;
    deferredEvents[index].argument = argument;
    requestUpdate();
}

void UpdatedObject::runUpdate() {
    updateState = State::Updating;
    update();
    updateState = State::Idle;
}

}  // namespace cinder
