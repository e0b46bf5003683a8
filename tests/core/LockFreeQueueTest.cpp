#include "core/LockFreeQueue.h"

#include <doctest/doctest.h>

#include <atomic>
#include <cmath>
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

/// A writer's n-th message. The halves say the same in two ways, so a torn payload shows.
struct Message {
    std::uint32_t content;
    std::uint32_t check;

    static Message of(int writer, int number) {
        const auto content = static_cast<std::uint32_t>(writer << 24 | number);
        return {content, content * 0x9e3779b1u};
    }
    int writer() const { return static_cast<int>(content >> 24); }
    int number() const { return static_cast<int>(content & 0xffffff); }
    bool isWhole() const { return check == content * 0x9e3779b1u; }
};

struct Outcome {
    int torn = 0, outOfOrder = 0, received = 0, leftOver = 0;
    long long sum = 0;

    bool isPerfect(int writers, int perWriter) const {
        const long long perWriterSum = static_cast<long long>(perWriter) * (perWriter - 1) / 2;
        return torn == 0 && outOfOrder == 0 && leftOver == 0 && received == writers * perWriter &&
               sum == writers * perWriterSum;
    }
};

/// Lets all threads loose on the queue at once and lets them run until it is drained. A round
/// is shorter than the 65536 updates after which a counter repeats, so that no thread, however
/// long it sleeps, can be fooled, and a failure is a fault of the queue.
Outcome runRound(LockFreeQueue<Message>& queue, int writers, int readers, int perWriter) {
    REQUIRE(3 * writers * perWriter < 65536);
    std::latch start(writers + readers);
    std::atomic<int> writersDone{0};
    std::vector<Outcome> outcomes(static_cast<std::size_t>(readers));
    std::vector<std::thread> threads;

    for (int writer = 0; writer < writers; ++writer)
        threads.emplace_back([&, writer] {
            start.arrive_and_wait();
            for (int i = 0; i < perWriter; ++i)
                while (!queue.push(Message::of(writer, i)))
                    std::this_thread::yield();
            writersDone.fetch_add(1);
        });
    for (Outcome& outcome : outcomes)
        threads.emplace_back([&] {
            std::vector<int> last(static_cast<std::size_t>(writers), -1);
            start.arrive_and_wait();
            for (;;) {
                // Asked before the look into the queue: found empty afterwards, it stays empty.
                const bool allSent = writersDone.load() == writers;
                Message message{};
                if (!queue.pop(message)) {
                    if (allSent) break;
                    std::this_thread::yield();
                    continue;
                }
                ++outcome.received;
                if (!message.isWhole() || message.writer() >= writers) {
                    ++outcome.torn;
                    continue;
                }
                int& previous = last[static_cast<std::size_t>(message.writer())];
                if (message.number() <= previous) ++outcome.outOfOrder;
                previous = message.number();
                outcome.sum += message.number();
            }
        });
    for (std::thread& thread : threads)
        thread.join();

    Outcome total;
    for (const Outcome& outcome : outcomes) {
        total.torn += outcome.torn;
        total.outOfOrder += outcome.outOfOrder;
        total.received += outcome.received;
        total.sum += outcome.sum;
    }
    Message message{};
    while (queue.pop(message))
        ++total.leftOver;
    return total;
}

}  // namespace

TEST_CASE("LockFreeQueue: behaves as a bounded first-in first-out list") {
    struct Case {
        int initialNodes, limit, capacity;
    };
    // Of `limit` nodes one is the mark for "none" and one is the dummy.
    constexpr Case cases[] = {
        // clang-format off
        {     2,      2,     0 },
        {     2,      3,     1 },
        {    32,     32,    30 },
        {     3,     50,    48 },  // the last doubling is cut short
        {   100,     40,    38 },
        {  1024,  65536, 65534 },
        {  8192,      0, 65534 },
        { 70000, 100000, 65534 },
        {    -5,     -5,     0 },
        // clang-format on
    };
    Rng rng = Rng::fromEnvironment();
    for (const Case& c : cases) {
        INFO("nodes " << c.initialNodes << ", limit " << c.limit << ", seed " << rng.seed());
        LockFreeQueue<std::uint64_t> queue(c.initialNodes, c.limit);
        std::deque<std::uint64_t> model;
        int wrong = 0, dropped = 0;
        std::uint64_t popped = 0;
        for (int phase = 0; phase < 6; ++phase) {
            // Full ones and empty ones in turn, then anything between.
            const int pushes = phase % 2 == 0 ? c.capacity + 5 : rng.integer(0, c.capacity + 2);
            for (int i = 0; i < pushes; ++i) {
                const std::uint64_t payload = rng.next();
                const bool fits = static_cast<int>(model.size()) < c.capacity;
                if (queue.push(payload) != fits) ++wrong;
                if (fits) model.push_back(payload);
                if (!fits) ++dropped;
            }
            const int pops = phase % 3 == 0 ? c.capacity + 5 : rng.integer(0, c.capacity);
            for (int i = 0; i < pops; ++i) {
                const bool there = !model.empty();
                if (queue.pop(popped) != there) ++wrong;
                if (!there) break;
                if (popped != model.front()) ++wrong;
                model.pop_front();
            }
        }
        CHECK(wrong == 0);
        CHECK(dropped >= 5);
    }
}

TEST_CASE("LockFreeQueue: the store doubles when it has run empty, and only then") {
    LockFreeQueue<std::uint64_t> queue(3, 50);
    std::vector<int> sizes = {queue.nodeCount()};
    for (std::uint64_t i = 0; i < 60; ++i) {
        queue.push(i);
        if (queue.nodeCount() != sizes.back()) sizes.push_back(queue.nodeCount());
    }
    CHECK(sizes == std::vector<int>{3, 6, 12, 24, 48, 50});

    LockFreeQueue<std::uint64_t> roomy(1024, 65536);
    std::uint64_t payload = 0;
    for (int pass = 0; pass < 100; ++pass) {
        for (std::uint64_t i = 0; i < 1022; ++i)
            roomy.push(i);
        while (roomy.pop(payload))
            continue;
    }
    CHECK(roomy.nodeCount() == 1024);
}

TEST_CASE("LockFreeQueue: push and pop are fit for the audio thread, growth is not") {
    LockFreeQueue<std::uint64_t> queue(64, 128);
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
    const auto growth = guarded([&] { fill(63); });
    CHECK(growth.of(Forbidden::Lock) == 2);  // in and out
    CHECK(growth.of(Forbidden::Allocation) == 0);
    fill(126 - 63);
    const auto full = guarded([&] { fill(10); });  // no lock is taken only to drop
    CHECK_MESSAGE(full.isClean(), full);
}

TEST_CASE("LockFreeQueue: a payload comes out with the bits that went in") {
    struct Change {
        std::uint32_t index;
        float value;
    };
    LockFreeQueue<Change> queue(8);
    CHECK(queue.push({0xffffffffu, -0.0f}));
    Change change{7, 1.0f};
    CHECK(queue.pop(change));
    CHECK(change.index == 0xffffffffu);
    CHECK(std::signbit(change.value));
    CHECK_FALSE(queue.pop(change));
    CHECK(change.index == 0xffffffffu);  // an empty queue leaves the target alone
}

TEST_CASE("LockFreeQueue: a million messages of 4 writers arrive whole and in order") {
    for (int readers : {1, 2})
        for (int round = 0; round < 50; ++round) {
            INFO("readers " << readers << ", round " << round);
            // Starts with no free node at all, so it grows while the readers read.
            LockFreeQueue<Message> queue(2);
            const Outcome outcome = runRound(queue, 4, readers, 5000);
            CHECK(outcome.isPerfect(4, 5000));
            CHECK(queue.nodeCount() > 2);
        }
}

TEST_CASE("LockFreeQueue: at its limit it drops the new message and keeps the others") {
    for (int round = 0; round < 300; ++round) {
        INFO("round " << round);
        // Several writers find the store empty at once and grow it to its limit and no further.
        LockFreeQueue<Message> queue(2, 16);
        CHECK(runRound(queue, 4, 2, 300).isPerfect(4, 300));
        CHECK(queue.nodeCount() == 16);
    }
}
