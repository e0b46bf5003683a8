#include "core/EventForwarderList.h"

#include <utility>

namespace cinder {

class EventForwarderList::Forwarder {
public:
    Forwarder(EventForwarderList* list, std::unique_ptr<NotifyEvent::Handler> handler)
        : list(list), handler(std::move(handler)) {}

    void eventFired(NotifyEvent::Argument newArgument) { list->enqueue(this, newArgument); }

    EventForwarderList* list;
    std::unique_ptr<NotifyEvent::Handler> handler;
    bool pending = false;
    NotifyEvent::Argument argument = nullptr;
    Forwarder* nextWaiting = nullptr;
};

EventForwarderList::EventForwarderList() = default;
EventForwarderList::~EventForwarderList() = default;

void EventForwarderList::forward(NotifyEvent& event,
                                 std::unique_ptr<NotifyEvent::Handler> handler) {
    forwarders.push_back(std::make_unique<Forwarder>(this, std::move(handler)));
    event.addHandler(NotifyEvent::makeHandler(forwarders.back().get(), &Forwarder::eventFired));
}

void EventForwarderList::enqueue(Forwarder* forwarder, NotifyEvent::Argument argument) {
    forwarder->argument = argument;
    if (!forwarder->pending) {
        forwarder->pending = true;
        forwarder->nextWaiting = nullptr;
        (lastWaiting ? lastWaiting->nextWaiting : firstWaiting) = forwarder;
        lastWaiting = forwarder;
    }
    requestUpdate();
}

void EventForwarderList::update() {
    // A handler may fire further events of the list; they join its end and are delivered as well.
    // It may open a bracket, too, whose end delivers what still waits; so the one whose handler
    // runs has left the list. It counts as pending until then: what it fires at itself is ignored.
    while (Forwarder* forwarder = firstWaiting) {
        firstWaiting = forwarder->nextWaiting;
        if (!firstWaiting) lastWaiting = nullptr;
        forwarder->handler->call(forwarder->argument);
        forwarder->pending = false;
    }
    UpdatedObject::update();
}

}  // namespace cinder
