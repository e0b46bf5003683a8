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
    CHECK(raisedByTwoThreads(*CriticalSection::create(), 20000) == 40000);
    CHECK(raisedByTwoThreads(LockedObject().criticalSection(), 20000) == 40000);
    CHECK(raisedByTwoThreads(instanceLock(), 20000) == 40000);
}

TEST_CASE("CriticalSection: the process has one instance lock, a locked object its own") {
    CHECK(&instanceLock() == &instanceLock());
    LockedObject one, two;
    CHECK(&one.criticalSection() != &two.criticalSection());
    CHECK(&one.criticalSection() == &one.criticalSection());
}
