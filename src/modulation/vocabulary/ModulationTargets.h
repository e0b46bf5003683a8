#pragma once

#include <span>
#include <string>

#include "modulation/vocabulary/ModulationTargetRange.h"

namespace cinder {

inline constexpr int numModulationTargets = 195;
inline constexpr int numModulationSlots = 50;
/// A slot's level is a target as well; those come last.
inline constexpr int firstSlotTarget = 145;

struct TargetRow {
    const char* name;
    RangeRecord range;
};

// clang-format off
inline constexpr TargetRow globalTargets[] = {
    {"Input Gain", RangeRecord::Gain},
    {"Input Pan", RangeRecord::Bipolar},
    {"Output Gain", RangeRecord::Gain},
    {"Output Pan", RangeRecord::Bipolar},
    {"Mix", RangeRecord::Bipolar},
};
inline constexpr TargetRow bandTargets[] = {
    {"Crossover Frequency", RangeRecord::Crossover},
    {"Dynamics", RangeRecord::Dynamics},
    {"Drive", RangeRecord::Unit},
    {"Drive Pan", RangeRecord::Bipolar},
    {"Output Level", RangeRecord::Level},
    {"Output Pan", RangeRecord::Bipolar},
    {"Bass", RangeRecord::Tone},
    {"Mid", RangeRecord::Tone},
    {"Treble", RangeRecord::Tone},
    {"Presence", RangeRecord::Tone},
    {"Feedback Amount", RangeRecord::Unit},
    {"Feedback Frequency", RangeRecord::FeedbackFrequency},
    {"Mix", RangeRecord::Bipolar},
};
inline constexpr TargetRow xlfoTargets[] = {
    {"Freq", RangeRecord::XLFOFreq},
    {"Glide", RangeRecord::XLFOGlide},
    {"Phase Offset", RangeRecord::XLFOPhaseOffset},
};
inline constexpr TargetRow egTargets[] = {
    {"Hold", RangeRecord::EGHold},
    {"Delay", RangeRecord::EGDelay},
    {"Attack", RangeRecord::EGAttack},
    {"Decay", RangeRecord::EGDecay},
    {"Sustain", RangeRecord::Unit},
    {"Release", RangeRecord::EGRelease},
};
inline constexpr TargetRow efTargets[] = {
    {"Attack", RangeRecord::EFAttack},
    {"Release", RangeRecord::EFRelease},
};
inline constexpr TargetRow slotTargets[] = {
    {"Level", RangeRecord::Unit},
};
// clang-format on

/// `count` members that have the same targets. Target t of member n, both counted from 0, is number
/// first + n * targets.size() + t.
struct TargetGroup {
    const char* name;  // the members', which count from 1; empty where the targets stand alone
    int first, count;
    std::span<const TargetRow> targets;
};

enum class TargetGroupId { Global, Band, XLFO, EnvelopeGenerator, EnvelopeFollower, Slot };

// clang-format off
inline constexpr TargetGroup targetGroups[] = {
    // name    first  count  targets of each
    {"",           0,     1, globalTargets},
    {"Band #",     5,     6, bandTargets},
    {"XLFO #",    83,     6, xlfoTargets},
    {"EG #",     101,     6, egTargets},
    {"EF #",     137,     4, efTargets},
    {"Slot #",   firstSlotTarget, numModulationSlots, slotTargets},
};
// clang-format on

/// Nothing between the groups, and nothing behind them.
constexpr bool isComplete(std::span<const TargetGroup> groups) {
    int next = 0;
    for (const TargetGroup& group : groups) {
        if (group.first != next) return false;
        next += group.count * static_cast<int>(group.targets.size());
    }
    return next == numModulationTargets;
}
static_assert(isComplete(targetGroups));

constexpr const TargetGroup& targetGroup(TargetGroupId id) {
    return targetGroups[static_cast<std::size_t>(id)];
}
/// A source owns the targets of the member of its own name.
constexpr bool areOwnTargetsOf(SourceKind kind, TargetGroupId id) {
    const SourceRow& row = sourceRows[static_cast<std::size_t>(kind)];
    const TargetGroup& group = targetGroup(id);
    return row.count == group.count && row.firstOwnTarget == group.first &&
           row.numOwnTargets == static_cast<int>(group.targets.size());
}
static_assert(areOwnTargetsOf(SourceKind::XLFO, TargetGroupId::XLFO) &&
              areOwnTargetsOf(SourceKind::EnvelopeGenerator, TargetGroupId::EnvelopeGenerator) &&
              areOwnTargetsOf(SourceKind::EnvelopeFollower, TargetGroupId::EnvelopeFollower));

/// The number of a target, from its member and its place in the member's row, counted from 0.
constexpr int targetNumber(TargetGroupId id, int member, int place) {
    const TargetGroup& group = targetGroup(id);
    return group.first + member * static_cast<int>(group.targets.size()) + place;
}

/// "Input Gain", "Band 2 Drive Pan", "Slot 7 Level"; empty for a number that is no target.
std::string nameOfTarget(int target);
/// For targets 0 to 194.
const ModulationTargetRange& rangeOfTarget(int target);

}  // namespace cinder
