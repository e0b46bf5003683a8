#include "core/UpdatedObject.h"

namespace cinder {

void UpdatedObject::update() {
    for (DeferredEvent& deferred : deferredEvents) {
        if (!deferred.pending) continue;
        deferred.event.fire(deferred.argument);
        deferred.pending = false;
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
