#pragma once

#include <memory>
#include <vector>

#include "core/UpdatedObject.h"

namespace cinder {

/// Holds back events until the end of an update bracket, and delivers each of them once, however
/// often it was fired inside the bracket. The last argument wins.
/// State   forwarders, owned; those that wait form a list through the forwarders themselves, so
///         firing and delivering never allocate and may run on the audio thread
class EventForwarderList final : public UpdatedObject {
public:
    EventForwarderList();
    ~EventForwarderList() override;
    EventForwarderList(const EventForwarderList&) = delete;
    EventForwarderList& operator=(const EventForwarderList&) = delete;

    /// Delivers `event` to `handler` by way of this list. The event must not be fired any more
    /// once the list is gone.
    void forward(NotifyEvent& event, std::unique_ptr<NotifyEvent::Handler> handler);

    void update() override;

private:
    class Forwarder;

    void enqueue(Forwarder* forwarder, NotifyEvent::Argument argument);

    std::vector<std::unique_ptr<Forwarder>> forwarders;
    Forwarder* firstWaiting = nullptr;
    Forwarder* lastWaiting = nullptr;
};

}  // namespace cinder
