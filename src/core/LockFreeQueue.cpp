#include "core/LockFreeQueue.h"

#include <algorithm>

namespace cinder {
namespace {

constexpr std::uint32_t indexMask = 0xffff;
constexpr std::uint32_t counterStep = 0x10000;
constexpr std::uint32_t mostNodes = 65536;
constexpr std::uint32_t fewestNodes = 2;

constexpr std::uint32_t indexOf(std::uint32_t link) {
    return link & indexMask;
}

/// What follows `link` when its index becomes `index`.
constexpr std::uint32_t moved(std::uint32_t link, std::uint32_t index) {
    return ((link & ~indexMask) + counterStep) | index;
}

constexpr std::uint32_t clampedLimit(int limit) {
    if (limit == 0) return mostNodes;
    return static_cast<std::uint32_t>(std::clamp<int>(limit, fewestNodes, mostNodes));
}

// On the memory order. A node that was popped goes to the free list and comes back under another
// payload, while a slow thread may still look at it. That thread must then fail to swap. So every
// word of a node is stored with release and loaded with acquire: whoever sees a word of the new
// life also sees the head or tail that ended the old one, and its own compare-and-swap, or its
// second look at head or tail, finds the counter moved on.
constexpr auto acquire = std::memory_order_acquire;
constexpr auto release = std::memory_order_release;
constexpr auto both = std::memory_order_acq_rel;
constexpr auto relaxed = std::memory_order_relaxed;

}  // namespace

RawLockFreeQueue::RawLockFreeQueue(int initialNodes, int limitWanted)
    : limit(clampedLimit(limitWanted)),
      nodes(std::allocator<Node>().allocate(limit)),
      growth(CriticalSection::create()) {
    constexpr std::uint32_t dummy = 1;
    const auto count = static_cast<std::uint32_t>(
        std::clamp<int>(initialNodes, fewestNodes, static_cast<int>(limit)));
    makeNodes(0, count);
    nodes[dummy].link.store(0, relaxed);
    head.store(dummy, relaxed);
    tail.store(dummy, relaxed);
    freeHead.store(count > dummy + 1 ? dummy + 1 : 0, relaxed);
    nodesMade.store(count, release);
}

RawLockFreeQueue::~RawLockFreeQueue() {
    static_assert(std::is_trivially_destructible_v<Node>);
    std::allocator<Node>().deallocate(nodes, limit);
}

bool RawLockFreeQueue::push(std::uint64_t payload) noexcept CINDER_REALTIME {
    const std::uint32_t index = takeNode();
    if (index == 0) return false;
    Node& node = nodes[index];
    node.low.store(static_cast<std::uint32_t>(payload), release);
    node.high.store(static_cast<std::uint32_t>(payload >> 32), release);
    node.link.store(moved(node.link.load(relaxed), 0), release);

    for (;;) {
        const Link last = tail.load(acquire);
        AtomicLink& lastLink = nodes[indexOf(last)].link;
        Link next = lastLink.load(acquire);
        if (tail.load(acquire) != last) continue;  // the link may be one of a later life
        if (indexOf(next) != 0) {
            advanceTail(last, indexOf(next));
        } else if (lastLink.compare_exchange_weak(next, moved(next, index), both, relaxed)) {
            advanceTail(last, index);
            return true;
        }
    }
}

bool RawLockFreeQueue::pop(std::uint64_t& payload) noexcept CINDER_REALTIME {
    for (;;) {
        Link first = head.load(acquire);
        const Link last = tail.load(acquire);
        const std::uint32_t next = indexOf(nodes[indexOf(first)].link.load(acquire));
        if (head.load(acquire) != first) continue;  // the three words don't belong together
        if (indexOf(first) == indexOf(last)) {
            if (next == 0) return false;
            advanceTail(last, next);
            continue;
        }
        // Read before the swap: afterwards another thread may pop and reuse the node.
        const std::uint64_t low = nodes[next].low.load(acquire);
        const std::uint64_t high = nodes[next].high.load(acquire);
        if (head.compare_exchange_weak(first, moved(first, next), both, relaxed)) {
            payload = high << 32 | low;
            releaseNodes(indexOf(first), indexOf(first));
            return true;
        }
    }
}

/// Moves a tail that lags behind. It fails if another thread has moved it, which is as well.
void RawLockFreeQueue::advanceTail(Link last, std::uint32_t next) noexcept CINDER_REALTIME {
    tail.compare_exchange_strong(last, moved(last, next), both, relaxed);
}

/// A node from the free list, or 0 if all nodes up to the limit are in use.
std::uint32_t RawLockFreeQueue::takeNode() noexcept CINDER_REALTIME {
    for (;;) {
        // The count before the list: a list found empty after the last growth is truly empty.
        const std::uint32_t count = nodesMade.load(acquire);
        Link first = freeHead.load(acquire);
        const std::uint32_t index = indexOf(first);
        if (index == 0) {
            if (count == limit) return 0;
            grow(count);
            continue;
        }
        const std::uint32_t next = indexOf(nodes[index].link.load(acquire));
        if (freeHead.compare_exchange_weak(first, moved(first, next), both, relaxed)) return index;
    }
}

/// Puts a chain of nodes, linked from `first` to `last`, in front of the free list.
void RawLockFreeQueue::releaseNodes(std::uint32_t first,
                                    std::uint32_t last) noexcept CINDER_REALTIME {
    AtomicLink& lastLink = nodes[last].link;
    Link next = freeHead.load(relaxed);
    do {
        lastLink.store(moved(lastLink.load(relaxed), indexOf(next)), release);
    } while (!freeHead.compare_exchange_weak(next, moved(next, first), both, relaxed));
}

/// Makes the nodes `from`..`to` - 1 as a chain with an open end.
void RawLockFreeQueue::makeNodes(std::uint32_t from, std::uint32_t to) noexcept {
    for (std::uint32_t index = from; index < to; ++index) {
        Node* node = std::construct_at(&nodes[index]);
        if (index + 1 < to) node->link.store(index + 1, relaxed);
    }
}

void RawLockFreeQueue::grow(std::uint32_t countSeen) noexcept {
    ScopedLock lock(*growth);
    const std::uint32_t count = nodesMade.load(relaxed);
    if (count != countSeen) return;  // another thread has grown the queue while this one waited
    const std::uint32_t newCount = std::min(2 * count, limit);
    makeNodes(count, newCount);
    releaseNodes(count, newCount - 1);
    nodesMade.store(newCount, release);
}

}  // namespace cinder
