#include "core/simd/InstructionSet.h"

#include <doctest/doctest.h>

using namespace cinder::simd;

TEST_CASE("InstructionSet: the highest is active, and a scope gives back the one before") {
    const auto sets = supportedSets();
    REQUIRE(!sets.empty());
    CHECK(sets.front() == InstructionSet::baseline);
    const InstructionSet best = activeSet();
    CHECK(best == sets.back());
    {
        ScopedInstructionSet outer(InstructionSet::baseline);
        { ScopedInstructionSet inner(best); }
        CHECK(activeSet() == InstructionSet::baseline);
    }
    CHECK(activeSet() == best);
}
