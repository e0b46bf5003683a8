#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

#include "core/AsyncEventQueue.h"

namespace cinder {

/// The thread of the interface, and the queue that leads to it.
///
/// At first it is the thread that made the object. A queue would never be served on a thread
/// without a loop, so only the first thread of the process gets one at once; any other gets its
/// queue when a window opens on it.
///
/// State   the thread and its queue. Queues of earlier threads stay, since a post that has found
///         one may be late; a thread that comes back gets its own again
/// Errors  none
class InterfaceThread {
public:
    /// The handler runs on the thread of the interface.
    explicit InterfaceThread(AsyncEventQueue::Handler handler);
    ~InterfaceThread();
    InterfaceThread(const InterfaceThread&) = delete;
    InterfaceThread& operator=(const InterfaceThread&) = delete;

    /// The calling thread is it. [any]
    bool isCurrent() const noexcept CINDER_REALTIME {
        return thread.load() == std::this_thread::get_id();
    }
    bool hasQueue() const noexcept CINDER_REALTIME { return current.load() != nullptr; }

    /// Wants a queue. [any] but [audio]
    void post(int event, int argument);
    /// Leaves an event for the next dispatch, in the place of one that was left before and hasn't
    /// been found yet: however many come, the audio thread takes no memory for them. [any]
    void leaveLatest(std::int32_t event, std::int32_t argument) noexcept CINDER_REALTIME {
        latest = std::uint64_t{static_cast<std::uint32_t>(event)} << 32 |
                 static_cast<std::uint32_t>(argument);
    }

    /// The calling thread becomes it, and has a queue. True: events of the old one may be lost.
    bool moveHere();

    /// What waits, on the thread of the interface; how many there were.
    int dispatch();
    /// Readable while a dispatch is due; -1 without a queue.
    int waitHandle() const;

private:
    struct Queue {
        std::thread::id owner;
        std::atomic<int> waiting{0};
        std::unique_ptr<AsyncEventQueue> events;
    };

    static constexpr std::uint64_t nothing = ~std::uint64_t{0};

    void openQueue();
    void handle(Queue& queue, int event, int argument);

    const AsyncEventQueue::Handler handler;
    std::atomic<std::thread::id> thread;
    std::vector<std::unique_ptr<Queue>> queues;  // touched by the thread that opens a window alone
    std::atomic<Queue*> current{nullptr};
    std::atomic<std::uint64_t> latest{nothing};  // event and argument, 32 bits each
};

}  // namespace cinder
