#pragma once

#include <functional>
#include <memory>

#include "core/Realtime.h"

namespace cinder {

/// Carries work to the thread that made the queue: what any thread posts, the handler gets there,
/// in the order of posting.
/// Shape   an event number and an argument, both whole numbers, per post
/// State   the waiting events; whoever deletes the queue drops them. Not from inside the handler.
/// Errors  with 65534 events waiting a further one is dropped
///
/// The owner's loop, be it a host's, a window's or a command's, waits until `waitHandle` becomes
/// readable, and then calls `dispatch`. However many events are posted before that, they cost one
/// wake-up. A loop that serves an audio thread also dispatches at its own tick, since the audio
/// thread posts without waking anyone.
class AsyncEventQueue {
public:
    using Handler = std::function<void(int event, int argument)>;

    static std::unique_ptr<AsyncEventQueue> create();

    virtual ~AsyncEventQueue() = default;
    AsyncEventQueue(const AsyncEventQueue&) = delete;
    AsyncEventQueue& operator=(const AsyncEventQueue&) = delete;

    /// Set once, by the owner. Until then events wait.
    virtual void setHandler(Handler handler) = 0;

    /// Appends an event and wakes the owner. Never waits. [any] but [audio]
    virtual void post(int event, int argument) = 0;
    /// Appends an event without a system call: the owner finds it at its next dispatch. [audio]
    virtual void postFromAudio(int event, int argument) noexcept CINDER_REALTIME = 0;

    /// Hands the handler all events that waited when the call began, and answers how many. Events
    /// that the handler itself posts wait for the next call. The owner's thread only.
    virtual int dispatch() = 0;
    /// A descriptor for `poll`, readable while a dispatch is due.
    virtual int waitHandle() const = 0;

protected:
    AsyncEventQueue() = default;
};

}  // namespace cinder
