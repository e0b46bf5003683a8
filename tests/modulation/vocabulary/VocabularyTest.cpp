#include <doctest/doctest.h>

#include <set>
#include <string>

#include "modulation/vocabulary/ModulationTargets.h"
#include "modulation/vocabulary/SourceParameters.h"

namespace cinder {
namespace {

TEST_CASE("Vocabulary: rows expand to the names of all sources and targets") {
    struct Case {
        int number;
        const char* name;
    };
    for (const auto& [number, name] : {Case{0, "XY 1 Hor"},
                                       {7, "XY 4 Ver"},
                                       {10, "XLFO 3"},
                                       {19, "EG 6"},
                                       {20, "EF 1"},
                                       {33, "MIDI 10"}})
        CHECK(nameOfSource(number) == name);
    for (const auto& [number, name] : {Case{0, "Input Gain"},
                                       {4, "Mix"},
                                       {5, "Band 1 Crossover Frequency"},
                                       {21, "Band 2 Drive Pan"},
                                       {82, "Band 6 Mix"},
                                       {85, "XLFO 1 Phase Offset"},
                                       {136, "EG 6 Release"},
                                       {144, "EF 4 Release"},
                                       {151, "Slot 7 Level"},
                                       {194, "Slot 50 Level"}})
        CHECK(nameOfTarget(number) == name);

    std::set<std::string> sources, targets;
    for (int i = -1; i <= numModulationSources; ++i)
        sources.insert(nameOfSource(i));
    for (int i = -1; i <= numModulationTargets; ++i)
        targets.insert(nameOfTarget(i));
    CHECK(sources.size() == numModulationSources + 1);  // and the empty one
    CHECK(targets.size() == numModulationTargets + 1);
}

TEST_CASE("Vocabulary: a source owns the targets that bear its name") {
    for (int source = 0; source < numModulationSources; ++source) {
        const TargetSpan own = ownTargetsOfSource(source);
        const std::string prefix = nameOfSource(source) + ' ';
        CAPTURE(prefix);
        int numNamed = 0;
        for (int target = 0; target < numModulationTargets; ++target) {
            const bool isNamed = nameOfTarget(target).rfind(prefix, 0) == 0;
            CHECK(isNamed == (target >= own.first && target < own.first + own.count));
            numNamed += isNamed ? 1 : 0;
        }
        CHECK(numNamed == own.count);
    }
}

TEST_CASE("Vocabulary: depths take the default's double for followers, and 1 on the grid") {
    for (int target = 0; target < numModulationTargets; ++target) {
        const ModulationTargetRange& range = rangeOfTarget(target);
        CAPTURE(nameOfTarget(target));
        CHECK(range.minimum < range.maximum);
        CHECK(range.depthOf(SourceKind::EnvelopeFollower) ==
              doctest::Approx(2.0 * static_cast<double>(range.depthOf(SourceKind::Midi))));
        const bool isOnGrid = &range == &rangeRecord(RangeRecord::FeedbackFrequency) ||
                              &range == &rangeRecord(RangeRecord::XLFOFreq);
        CHECK(range.depthOf(SourceKind::SnappedXLFO) ==
              (isOnGrid ? 1.0f : range.depthOf(SourceKind::XLFO)));
    }
    CHECK(&rangeOfTarget(16) == &rangeRecord(RangeRecord::FeedbackFrequency));
    CHECK(&rangeOfTarget(83) == &rangeRecord(RangeRecord::XLFOFreq));
    CHECK(&rangeOfTarget(194) == &rangeRecord(RangeRecord::Unit));
}

}  // namespace
}  // namespace cinder
