#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cassert>
#include <cerrno>
#include <cstdint>
#include <system_error>
#include <thread>
#include <utility>

#include "core/AsyncEventQueue.h"
#include "core/LockFreeQueue.h"

namespace cinder {
namespace {

class LinuxAsyncEventQueue final : public AsyncEventQueue {
public:
    LinuxAsyncEventQueue() : descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
        if (descriptor < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
    }
    ~LinuxAsyncEventQueue() override { close(descriptor); }

    void setHandler(Handler newHandler) override {
        assert(!handler && isOwner());
        handler = std::move(newHandler);
    }

    void post(int event, int argument) override {
        postFromAudio(event, argument);
        if (wakeIsDue.exchange(true, std::memory_order_acq_rel)) return;
        const std::uint64_t one = 1;
        // Fails only if the counter is full, and then the descriptor is readable as it should be.
        [[maybe_unused]] const auto written = write(descriptor, &one, sizeof one);
    }

    void postFromAudio(int event, int argument) noexcept CINDER_REALTIME override {
        if (events.push({event, argument})) posted.fetch_add(1, std::memory_order_release);
    }

    int dispatch() override {
        assert(isOwner());
        if (!handler) return 0;
        std::uint64_t count = 0;
        [[maybe_unused]] const auto got = read(descriptor, &count, sizeof count);
        // The flag before the count: who posts after this line wakes the owner again.
        wakeIsDue.exchange(false, std::memory_order_acq_rel);
        const std::uint32_t end = posted.load(std::memory_order_acquire);

        int numHandled = 0;
        Event next{};
        // The handler may run a loop of its own that dispatches, so `handled` may pass `end`.
        while (static_cast<std::int32_t>(end - handled) > 0 && events.pop(next)) {
            ++handled;
            ++numHandled;
            handler(next.event, next.argument);
        }
        return numHandled;
    }

    int waitHandle() const override { return descriptor; }

private:
    struct Event {
        std::int32_t event, argument;
    };

    bool isOwner() const { return std::this_thread::get_id() == owner; }

    const std::thread::id owner = std::this_thread::get_id();
    const int descriptor;
    Handler handler;
    LockFreeQueue<Event> events{256};
    std::atomic<bool> wakeIsDue{false};
    std::atomic<std::uint32_t> posted{0};  // modulo 2^32, as `handled` is
    std::uint32_t handled = 0;
};

}  // namespace

std::unique_ptr<AsyncEventQueue> AsyncEventQueue::create() {
    return std::make_unique<LinuxAsyncEventQueue>();
}

}  // namespace cinder
