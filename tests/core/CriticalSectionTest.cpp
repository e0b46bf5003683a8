#include "core/CriticalSection.h"

#include <doctest/doctest.h>

#include <thread>

#include "core/LockedObject.h"

using namespace cinder;

namespace {

/// Two threads raise a plain number; each step enters the section twice, as a re-entrant caller.
int raisedByTwoThreads(CriticalSection& section, int steps) {
    int number = 0;
    const auto raise = [&] {
        for (int i = 0; i < steps; ++i) {
            ScopedLock outer(section);
            ScopedLock inner(section);
            ++number;
        }
    };
    std::thread other(raise);
    raise();
    other.join();
    return number;
}

}  // namespace

TEST_CASE("CriticalSection: keeps others out, lets its own thread in again") {
    LockedObject one, two;
    for (CriticalSection* section : {&one.criticalSection(), &instanceLock()})
        CHECK(raisedByTwoThreads(*section, 20000) == 40000);
    CHECK(&instanceLock() == &instanceLock());
    CHECK(&one.criticalSection() != &two.criticalSection());
}
