#include "core/AsyncEventQueue.h"

#include <doctest/doctest.h>
#include <poll.h>

#include <thread>
#include <utility>
#include <vector>

#include "support/RealtimeGuard.h"

using cinder::AsyncEventQueue;
using cinder::test::guarded;

namespace {

using Events = std::vector<std::pair<int, int>>;

bool isReadable(const AsyncEventQueue& queue, int timeoutMs = 0) {
    pollfd entry{queue.waitHandle(), POLLIN, 0};
    return poll(&entry, 1, timeoutMs) == 1;
}

}  // namespace

TEST_CASE("AsyncEventQueue: one wake-up for many posts, and none for those of the audio thread") {
    const auto queue = AsyncEventQueue::create();
    Events seen;
    queue->post(3, -1);
    CHECK(queue->dispatch() == 0);  // before there is a handler it waits
    queue->setHandler([&](int event, int argument) { seen.emplace_back(event, argument); });
    CHECK(isReadable(*queue));
    queue->post(2, 0);
    CHECK(queue->dispatch() == 2);
    CHECK_FALSE(isReadable(*queue));
    const auto report = guarded([&] { queue->postFromAudio(1, 10); });
    CHECK_MESSAGE(report.isClean(), report);
    CHECK_FALSE(isReadable(*queue));
    queue->post(1, 11);
    CHECK(isReadable(*queue));
    CHECK(queue->dispatch() == 2);
    queue->postFromAudio(1, 12);
    CHECK(queue->dispatch() == 1);
    CHECK(seen == Events{{3, -1}, {2, 0}, {1, 10}, {1, 11}, {1, 12}});
}

TEST_CASE("AsyncEventQueue: what a handler posts waits, unless it runs a loop that dispatches") {
    const auto queue = AsyncEventQueue::create();
    std::vector<int> seen;
    queue->setHandler([&](int, int argument) {
        seen.push_back(argument);
        if (argument == 0) {
            queue->post(0, 3);
            CHECK(queue->dispatch() == 3);
        }
        if (argument >= 3) queue->post(0, argument + 1);
    });
    for (int i = 0; i < 3; ++i)
        queue->post(0, i);
    for (int round = 0; round < 3; ++round) {
        CHECK(isReadable(*queue));
        CHECK(queue->dispatch() == 1);
    }
    CHECK(seen == std::vector<int>{0, 1, 2, 3, 4, 5});
}

TEST_CASE("AsyncEventQueue: posts of four threads reach the owner's thread, each in its order") {
    constexpr int perThread = 5000;
    const auto queue = AsyncEventQueue::create();
    int next[4] = {}, wrong = 0, handled = 0;
    queue->setHandler([&, owner = std::this_thread::get_id()](int event, int argument) {
        wrong += std::this_thread::get_id() != owner || argument != next[event]++;
    });
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&, thread] {
            for (int i = 0; i < perThread; ++i)
                queue->post(thread, i);
        });
    // Waits without a time limit of its own: a lost wake-up would end in the runner's.
    while (handled < 4 * perThread && isReadable(*queue, -1))
        handled += queue->dispatch();
    for (std::thread& thread : threads)
        thread.join();
    CHECK(handled == 4 * perThread);
    CHECK(wrong == 0);
    queue->post(0, perThread);  // left over: the destructor drops it
}
