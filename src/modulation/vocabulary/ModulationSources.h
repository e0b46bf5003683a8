#pragma once

#include <cstdint>
#include <string>

#include "modulation/vocabulary/NamePattern.h"

namespace cinder {

inline constexpr int numModulationSources = 34;
/// Some sources exist twice, the second one for targets that want notes without a ramp.
inline constexpr int numSourceVariants = 2;

enum class SourceKind : std::int32_t {
    XY = 0,
    XLFO = 1,
    EnvelopeGenerator = 2,
    EnvelopeFollower = 3,
    Midi = 4,
    SnappedXLFO = 5,  ///< an XLFO whose steps stand on the grid of semitones
};

/// The sources of one kind. `names` go round from source to source; the number grows with each
/// round. Source n of the row owns `numOwnTargets` targets from firstOwnTarget + n * numOwnTargets
/// on: they are its own controls.
struct SourceRow {
    SourceKind kind;
    int first, count;
    const char* names;
    int firstOwnTarget, numOwnTargets;
};

// clang-format off
inline constexpr SourceRow sourceRows[] = {
    // kind                          first  count  names                 own targets: first, each
    {SourceKind::XY,                     0,     8, "XY # Hor,XY # Ver",    0, 0},
    {SourceKind::XLFO,                   8,     6, "XLFO #",              83, 3},
    {SourceKind::EnvelopeGenerator,     14,     6, "EG #",               101, 6},
    {SourceKind::EnvelopeFollower,      20,     4, "EF #",               137, 2},
    {SourceKind::Midi,                  24,    10, "MIDI #",               0, 0},
};
// clang-format on

/// Row i describes kind i, and the rows cover all sources without a gap.
constexpr bool isCompleteAndOrdered(const SourceRow (&rows)[5]) {
    int next = 0;
    for (int i = 0; i < 5; ++i) {
        if (static_cast<int>(rows[i].kind) != i || rows[i].first != next) return false;
        next += rows[i].count;
    }
    return next == numModulationSources;
}
static_assert(isCompleteAndOrdered(sourceRows));

struct TargetSpan {
    int first = 0, count = 0;
};

const SourceRow& rowOfSource(int source);
/// "XY 1 Hor", "XLFO 3"; empty for a number that is no source, also below.
std::string nameOfSource(int source);
SourceKind kindOfSource(int source);
TargetSpan ownTargetsOfSource(int source);

}  // namespace cinder
