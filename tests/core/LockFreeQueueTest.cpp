#include "core/LockFreeQueue.h"

#include <doctest/doctest.h>

#include <atomic>
#include <cstdint>
#include <deque>
#include <latch>
#include <thread>
#include <vector>

#include "support/RealtimeGuard.h"
#include "support/Rng.h"

using cinder::LockFreeQueue;
using cinder::test::Forbidden;
using cinder::test::guarded;
using cinder::test::Rng;

namespace {

/// The halves say the same in two ways, so a torn payload shows.
struct Message {
    std::uint32_t content;
    std::uint32_t check;
};

/// Lets all threads loose on the queue at once and lets them run until it is drained. Counts the
/// messages that came torn, out of order, or not just once. A round is shorter than the 65536
/// updates after which a counter repeats, so that no thread, however long it sleeps, can be fooled,
/// and a failure is a fault of the queue.
int faultsOfRound(LockFreeQueue<Message>& queue, int writers, int readers, int perWriter) {
    REQUIRE(3 * writers * perWriter < 65536);
    std::latch start(writers + readers);
    std::atomic<int> writersDone{0}, faults{0};
    const auto count = static_cast<std::uint32_t>(writers * perWriter);
    std::vector<std::atomic<int>> arrivals(count);
    std::vector<std::thread> threads;
    for (int writer = 0; writer < writers; ++writer)
        threads.emplace_back([&, writer] {
            start.arrive_and_wait();
            for (int i = 0; i < perWriter; ++i) {
                const auto content = static_cast<std::uint32_t>(writer * perWriter + i);
                while (!queue.push({content, content * 0x9e3779b1u}))
                    std::this_thread::yield();
            }
            writersDone.fetch_add(1);
        });
    const auto read = [&] {
        std::vector<int> last(static_cast<std::size_t>(writers), -1);
        start.arrive_and_wait();
        for (;;) {
            // Asked before the look into the queue: found empty afterwards, it stays empty.
            const bool allSent = writersDone.load() == writers;
            Message message{};
            if (!queue.pop(message)) {
                if (allSent) break;
                std::this_thread::yield();
            } else if (message.content >= count || message.check != message.content * 0x9e3779b1u) {
                ++faults;
            } else {
                const int number = static_cast<int>(message.content) % perWriter;
                int& previous = last[message.content / static_cast<std::uint32_t>(perWriter)];
                faults += number <= previous;
                previous = number;
                ++arrivals[message.content];
            }
        }
    };
    for (int reader = 0; reader < readers; ++reader)
        threads.emplace_back(read);
    for (std::thread& thread : threads)
        thread.join();
    for (const std::atomic<int>& arrived : arrivals)
        faults += arrived != 1;
    return faults;
}

}  // namespace

TEST_CASE("LockFreeQueue: behaves as a bounded first-in first-out list") {
    // Of `limit` nodes one is the mark for "none" and one is the dummy. The store doubles, and the
    // last doubling may be cut short.
    struct Case {
        int initialNodes, limit, capacity, nodesAtLast;
    };
    constexpr Case cases[] = {
        // clang-format off
        {     2,      2,     0,     2 },
        {     2,      3,     1,     3 },
        {     3,     50,    48,    50 },
        {   100,     40,    38,    40 },
        {  8192,      0, 65534, 65536 },
        {    -5,     -5,     0,     2 },
        // clang-format on
    };
    Rng rng = Rng::fromEnvironment();
    for (const Case& c : cases) {
        INFO("nodes " << c.initialNodes << ", limit " << c.limit << ", seed " << rng.seed());
        LockFreeQueue<std::uint64_t> queue(c.initialNodes, c.limit);
        std::deque<std::uint64_t> model;
        int wrong = 0;
        for (int phase = 0; phase < 6; ++phase) {
            // Full ones and empty ones in turn, then anything between.
            const int pushes = phase % 2 == 0 ? c.capacity + 5 : rng.integer(0, c.capacity + 2);
            for (int i = 0; i < pushes; ++i) {
                const std::uint64_t payload = rng.next();
                const bool fits = static_cast<int>(model.size()) < c.capacity;
                wrong += queue.push(payload) != fits;
                if (fits) model.push_back(payload);
            }
            const int pops = phase % 3 == 0 ? c.capacity + 5 : rng.integer(0, c.capacity);
            for (int i = 0; i < pops; ++i) {
                const bool there = !model.empty();
                const std::uint64_t before = rng.next();
                std::uint64_t popped = before;
                wrong += queue.pop(popped) != there;
                wrong += popped != (there ? model.front() : before);
                if (there) model.pop_front();
            }
        }
        CHECK(wrong == 0);
        CHECK(queue.nodeCount() == c.nodesAtLast);
    }
}

TEST_CASE("LockFreeQueue: fit for the audio thread, but for growth, which comes by doubling") {
    LockFreeQueue<std::uint64_t> queue(64, 200);
    const auto fill = [&](int count) {
        for (int i = 0; i < count; ++i)
            queue.push(static_cast<std::uint64_t>(i));
    };
    const auto report = guarded([&] {
        std::uint64_t payload = 0;
        for (int pass = 0; pass < 10; ++pass) {
            fill(62);
            while (queue.pop(payload))
                continue;
        }
    });
    CHECK_MESSAGE(report.isClean(), report);
    CHECK(queue.nodeCount() == 64);
    const auto growth = guarded([&] { fill(63); });
    CHECK(growth.of(Forbidden::Lock) == 2);  // in and out
    CHECK(growth.of(Forbidden::Allocation) == 0);
    CHECK(queue.nodeCount() == 128);
    fill(198 - 63);
    const auto full = guarded([&] { fill(10); });  // no lock is taken only to drop
    CHECK_MESSAGE(full.isClean(), full);
}

TEST_CASE("LockFreeQueue: messages of 4 writers arrive whole, once and in order") {
    struct Case {
        int limit, readers, perWriter, rounds;
    };
    // The store starts with no free node at all: it grows while the readers read, or the writers
    // find it empty at once, grow it to its limit and no further, and from there on drop.
    for (const Case& c : {Case{65536, 1, 5000, 50}, {65536, 2, 5000, 50}, {16, 2, 300, 300}})
        for (int round = 0; round < c.rounds; ++round) {
            INFO("limit " << c.limit << ", readers " << c.readers << ", round " << round);
            LockFreeQueue<Message> queue(2, c.limit);
            CHECK(faultsOfRound(queue, 4, c.readers, c.perWriter) == 0);
            CHECK(queue.nodeCount() > 2);
            if (c.limit == 16) CHECK(queue.nodeCount() == 16);
        }
}
