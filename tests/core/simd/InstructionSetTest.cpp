#include "core/simd/InstructionSet.h"

#include <doctest/doctest.h>

#include <string>

using namespace cinder::simd;

TEST_CASE("InstructionSet: the highest supported set is active") {
    const auto sets = supportedSets();
    REQUIRE(!sets.empty());
    CHECK(sets.front() == InstructionSet::baseline);
    CHECK(activeSet() == sets.back());
    for (const InstructionSet set : sets)
        CHECK(!std::string(nameOf(set)).empty());
}

TEST_CASE("InstructionSet: a scope changes the active set and gives it back") {
    const InstructionSet best = activeSet();
    {
        ScopedInstructionSet outer(InstructionSet::baseline);
        CHECK(activeSet() == InstructionSet::baseline);
        {
            ScopedInstructionSet inner(best);
            CHECK(activeSet() == best);
        }
        CHECK(activeSet() == InstructionSet::baseline);
    }
    CHECK(activeSet() == best);
}
