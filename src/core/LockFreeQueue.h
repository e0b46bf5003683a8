#pragma once

#include <atomic>
#include <bit>
#include <cstdint>
#include <memory>
#include <type_traits>

#include "core/CriticalSection.h"
#include "core/Realtime.h"

namespace cinder {

/// A first-in first-out queue of 8-byte payloads that any number of threads push to and pop from.
/// Shape   `limit` nodes of 12 bytes in one reserved range of addresses, of which `initialNodes`
///         are made at once. Node 0 stands for "none" and one more node is the queue's dummy, so a
///         queue at its limit holds `limit` - 2 payloads.
/// Range   limit 2..65536; 0 and anything above mean 65536; initialNodes 2..limit; clamped
/// State   the nodes; when they run out their number doubles up to the limit. Nothing moves: the
///         new nodes lie behind the old ones, in pages that no one had touched.
/// Errors  a payload pushed on a full queue is dropped; `push` answers false then
/// Source  M. Michael, M. Scott, "Simple, fast, and practical non-blocking and blocking concurrent
///         queue algorithms", 1996
///
/// `push` and `pop` are lock-free, allocate nothing and are fit for the audio thread, with one
/// exception: a push that finds no free node below the limit takes a lock while it makes more.
///
/// Every index carries a counter of 16 bits that moves on with each update, so that a thread that
/// slept between reading a word and swapping it fails to swap. It could be fooled only if the word
/// were updated an exact multiple of 65536 times during that sleep and had the same index again.
class RawLockFreeQueue {
public:
    explicit RawLockFreeQueue(int initialNodes, int limit = 0);
    ~RawLockFreeQueue();
    RawLockFreeQueue(const RawLockFreeQueue&) = delete;
    RawLockFreeQueue& operator=(const RawLockFreeQueue&) = delete;

    bool push(std::uint64_t payload) noexcept CINDER_REALTIME;  ///< [any]
    bool pop(std::uint64_t& payload) noexcept CINDER_REALTIME;  ///< [any]

    /// Nodes made so far, node 0 and the dummy included. [any]
    int nodeCount() const noexcept CINDER_REALTIME {
        return static_cast<int>(nodesMade.load(std::memory_order_acquire));
    }

private:
    /// An index in the low 16 bits, its counter in the high 16 bits.
    using Link = std::uint32_t;
    using AtomicLink = std::atomic<Link>;

    /// Atomic in two halves, since 12 bytes align to 4.
    struct Node {
        AtomicLink link{0};
        std::atomic<std::uint32_t> low{0};
        std::atomic<std::uint32_t> high{0};
    };
    static_assert(sizeof(Node) == 12 && AtomicLink::is_always_lock_free);

    static constexpr int cacheLine = 64;  // pushers, poppers and the free list don't share one

    std::uint32_t takeNode() noexcept CINDER_REALTIME;
    void releaseNodes(std::uint32_t first, std::uint32_t last) noexcept CINDER_REALTIME;
    void advanceTail(Link last, std::uint32_t next) noexcept CINDER_REALTIME;
    void makeNodes(std::uint32_t from, std::uint32_t to) noexcept;
    void grow(std::uint32_t countSeen) noexcept;

    const std::uint32_t limit;
    Node* const nodes;
    std::unique_ptr<CriticalSection> growth;
    std::atomic<std::uint32_t> nodesMade{0};
    alignas(cacheLine) AtomicLink head;
    alignas(cacheLine) AtomicLink tail;
    alignas(cacheLine) AtomicLink freeHead{0};
};

/// `RawLockFreeQueue` for one type of payload.
template <typename T>
class LockFreeQueue {
    static_assert(sizeof(T) == sizeof(std::uint64_t) && std::is_trivially_copyable_v<T>,
                  "a payload has 8 bytes, which are copied as bits");

public:
    explicit LockFreeQueue(int initialNodes, int limit = 0) : queue(initialNodes, limit) {}

    /// Appends, or drops the payload and answers false if the queue is full. [any]
    bool push(const T& payload) noexcept CINDER_REALTIME {
        return queue.push(std::bit_cast<std::uint64_t>(payload));
    }
    /// Takes the oldest payload; answers false, with `payload` as it was, if there is none. [any]
    bool pop(T& payload) noexcept CINDER_REALTIME {
        std::uint64_t bits = 0;
        if (!queue.pop(bits)) return false;
        payload = std::bit_cast<T>(bits);
        return true;
    }
    int nodeCount() const noexcept CINDER_REALTIME { return queue.nodeCount(); }

private:
    RawLockFreeQueue queue;
};

}  // namespace cinder
