#include "plugin/InterfaceThread.h"

#include <algorithm>
#include <utility>

namespace cinder {
namespace {

std::atomic<std::thread::id> firstThread;

bool isFirstThread() {
    const std::thread::id self = std::this_thread::get_id();
    std::thread::id nobody;
    return firstThread.compare_exchange_strong(nobody, self) || nobody == self;
}

}  // namespace

InterfaceThread::InterfaceThread(AsyncEventQueue::Handler handler)
    : handler(std::move(handler)), thread(std::this_thread::get_id()) {
    if (isFirstThread()) openQueue();
}

InterfaceThread::~InterfaceThread() = default;

void InterfaceThread::openQueue() {
    const std::thread::id self = std::this_thread::get_id();
    auto found = std::ranges::find_if(queues, [&](const auto& own) { return own->owner == self; });
    if (found == queues.end()) {
        auto queue = std::make_unique<Queue>();
        queue->owner = self;
        queue->events = AsyncEventQueue::create();
        queue->events->setHandler(
            [this, own = queue.get()](int event, int argument) { handle(*own, event, argument); });
        found = queues.insert(queues.end(), std::move(queue));
    }
    current = found->get();
}

void InterfaceThread::handle(Queue& queue, int event, int argument) {
    --queue.waiting;
    // Whoever moved the thread away has seen to what waited here.
    if (isCurrent()) handler(event, argument);
}

void InterfaceThread::post(int event, int argument) {
    // The thread may move between the look and the post. Then either the one who moves sees that
    // something waits, or we see that it has moved.
    for (Queue* queue = nullptr; queue != current.load();) {
        queue = current;
        ++queue->waiting;
        queue->events->post(event, argument);
    }
}

bool InterfaceThread::moveHere() {
    if (isCurrent() && hasQueue()) return false;
    const Queue* const before = current;
    openQueue();
    thread = std::this_thread::get_id();
    return before && before->waiting > 0;
}

int InterfaceThread::dispatch() {
    Queue* const queue = current;
    if (!queue || !isCurrent()) return 0;
    int numHandled = queue->events->dispatch();
    if (const std::uint64_t left = latest.exchange(nothing); left != nothing) {
        handler(static_cast<std::int32_t>(left >> 32), static_cast<std::int32_t>(left));
        ++numHandled;
    }
    return numHandled;
}

int InterfaceThread::waitHandle() const {
    const Queue* const queue = current;
    return queue ? queue->events->waitHandle() : -1;
}

}  // namespace cinder
