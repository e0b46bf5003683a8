#pragma once

#include <iterator>

#include "distortion/curves/Clip.h"
#include "distortion/styles/DistortionProcessor.h"
#include "distortion/tone/CabinetRecipes.h"

// The styles, as they stand in saved sounds: a row's place is what counts, and no number moves.
// Filters are installed from top to bottom, which is their order in the signal path. Poles2 has
// 12 dB per octave, Poles4 has 24.

namespace cinder {

enum class StyleId : std::int32_t {
    CleanTube,
    WarmTube,
    BrokenTube,
    CleanTape,
    WarmTape,
    OldTape,
    SmoothAmp,
    CrunchyAmp,
    LeadAmp,
    ScreamingAmp,
    PowerAmp,
    GentleSaturation,
    HeavySaturation,
    Smudge,
    Rectify,
    Destroy,
};
inline constexpr int numStyles = 16;

/// What makeStyle takes.
struct ClipperRow {
    StyleId id;
    Curve curve;
    float power, negativeScale;
    float driveMinDb, driveMaxDb;  // gain into the curve at drive 0 and 1
    float referenceLevelDb;        // the level that keeps its height at every drive
    float outputDb;                // but for this
};

struct StyleRecipe {
    StyleId id;
    const char* name;
    Cabinet cabinet;
    DistortionSetup setup;
};

namespace style_rows {
using enum FilterShape;
using enum FilterSlope;
using enum StyleId;
using enum Cabinet;
using namespace distortion_paths;

// clang-format off
inline constexpr ClipperRow clipperRows[] = {
    //                 curve                     power negative gain from, to dB  reference output
    {CleanTube,        divisionByMagnitudeCurve, 0.8f, 0.5f,  -24.0f,  12.0f, -10.0f,  -0.3f},
    {WarmTube,         tubeCurve,                1.0f, 1.0f,  -20.0f,   6.0f, -12.0f,  -0.5f},
    {BrokenTube,       tubeCurve,                1.0f, 1.0f,  -18.0f,  48.0f, -30.0f,  -1.0f},
    {CleanTape,        sineCurve,                1.0f, 1.0f,   -6.0f,  24.0f, -18.0f,   0.0f},
    {WarmTape,         polynomeOrder3Curve,      1.0f, 1.0f,   -6.0f,  24.0f, -18.0f,   0.0f},
    {OldTape,          polynomeOrder2Curve,      1.0f, 1.0f,   -6.0f,  36.0f, -24.0f,   0.0f},
    {SmoothAmp,        arcTangentCurve,          1.0f, 0.2f,  -12.0f,  24.0f, -12.0f,   3.0f},
    {CrunchyAmp,       arcTangentCurve,          0.8f, 0.75f,  24.0f,  60.0f, -40.0f,  17.0f},
    {LeadAmp,          arcTangentCurve,          0.8f, 0.5f,   15.0f,  87.0f, -33.0f,  17.0f},
    {ScreamingAmp,     tubeCurve,                1.0f, 1.0f,  -40.0f,  70.0f,   0.0f, -40.0f},
    {PowerAmp,         arcTangentCurve,          1.0f, 0.5f,  -12.0f,  92.0f, -12.0f, -12.0f},
    {GentleSaturation, polynomeOrder3Curve,      1.0f, 1.0f,   -6.0f,  24.0f, -18.0f,   0.0f},
    {HeavySaturation,  divisionByMagnitudeCurve, 1.0f, 1.0f,   -2.0f,  72.0f, -32.0f,   3.0f},
    {Smudge,           polynomeOrder3Curve,      1.0f, 1.0f,   -3.46f, 24.0f, -20.0f,   0.0f},
    {Rectify,          rectifyCurve,             1.0f, 1.0f,    0.0f,  75.0f, -32.0f,  -1.5f},
    {Destroy,          sineCurve,                1.0f, 1.0f,    0.0f,  24.0f, -24.0f,   0.0f},
};

inline constexpr FilterRow cleanTubePre[] = {
    // Hz        dB     Q     shape
    { 8000.0f,   1.5f,  0.3f, HighShelf},
};
inline constexpr FilterRow cleanTubePost[] = {
    {   24.0f,   0.0f,  1.0f, HighPass },
    {  100.0f,   0.5f,  0.3f, LowShelf },
};

inline constexpr FilterRow warmTubePre[] = {
    // Hz        dB     Q     shape      slope
    {   24.0f,   0.0f,  1.0f, HighPass,  Poles2},
    { 1200.0f,   1.5f,  2.0f, Bell,      Poles2},
    {10000.0f,   3.0f,  0.3f, HighShelf, Poles2},
    {18000.0f,   0.0f,  1.0f, LowPass,   Poles4},
};
inline constexpr FilterRow warmTubePost[] = {
    {  100.0f,   3.0f,  0.3f, LowShelf,  Poles2},
    {20000.0f,   0.0f,  1.0f, LowPass,   Poles4},
};

inline constexpr FilterRow brokenPre[] = {
    // Hz        dB     Q      shape
    {   24.0f,  30.0f, 10.0f, Bell    },
    {   38.0f,  10.0f, 15.0f, Bell    },
    {  240.0f, -15.0f, 20.0f, Bell    },
    {  557.0f, -17.0f, 40.0f, Bell    },
};
inline constexpr FilterRow brokenPost[] = {
    {   60.0f,  12.0f,  1.0f, HighPass},
};

inline constexpr FilterRow warmTapePre[] = {
    // Hz        dB     Q     shape
    { 1200.0f,   1.0f,  2.0f, Bell     },
    {10000.0f,   2.0f,  0.3f, HighShelf},
    {   24.0f,   0.0f,  1.0f, HighPass },
};
inline constexpr FilterRow warmTapePost[] = {
    {  100.0f,   3.0f,  0.3f, LowShelf },
    {18000.0f,   0.0f,  1.0f, LowPass  },
};

inline constexpr FilterRow oldTapePre[] = {
    // Hz        dB     Q     shape
    {   30.0f,   0.0f,  1.5f, HighPass },
    { 1000.0f,  -2.0f,  0.3f, HighShelf},
    {16000.0f,  30.0f,  3.0f, Bell     },
};
inline constexpr FilterRow oldTapePost[] = {
    { 7000.0f,   0.0f,  1.2f, LowPass  },
};

inline constexpr FilterRow smoothPre[] = {
    // Hz        dB      Q       shape
    { 122.0f,    0.0f,   1.0f,   HighPass },
    {6324.0f,   10.3f,   0.447f, Bell     },
    {7015.0f,    0.0f,   1.0f,   LowPass  },
};
inline constexpr FilterRow smoothPost[] = {
    { 110.0f,   10.38f,  4.315f, Bell     },
    { 436.38f,  -9.25f,  0.397f, Bell     },
    {2816.3f,    7.44f,  0.3f,   HighShelf},
    {6517.6f,    0.0f,   3.118f, LowPass  },
};

inline constexpr FilterRow crunchyPre[] = {
    // Hz        dB      Q         shape
    { 186.0f,    0.0f,   0.295f,   HighPass},
    {1033.7f,   -5.41f,  0.843f,   Bell    },
    {8446.0f,    0.0f,   1.11308f, LowPass },
    {8446.0f,    0.0f,   2.6872f,  LowPass },
};
inline constexpr FilterRow crunchyPost[] = {
    { 112.9f,   14.28f,  2.451f,   Bell    },
    {2179.3f,  -13.53f,  1.004f,   LowShelf},
    {6517.6f,    0.0f,   2.568f,   LowPass },
};

inline constexpr FilterRow leadPre[] = {
    // Hz         dB      Q       shape
    {  93.707f,  30.0f,   0.806f, LowShelf},
    { 421.93f,    0.0f,   1.248f, HighPass},
    {1289.9f,    -6.32f,  1.898f, Bell    },
    {2100.0f,     0.0f,   1.0f,   LowPass },
};
inline constexpr FilterRow leadPost[] = {
    {  29.56f,    0.0f,   0.287f, HighPass},
    { 112.92f,   10.0f,   4.003f, Bell    },
    { 633.62f,  -15.34f,  0.346f, Bell    },
    {6300.0f,     0.0f,   4.5f,   LowPass },
};

inline constexpr FilterRow screamingPre[] = {
    // Hz        dB      Q       shape
    {  60.0f,    0.0f,   1.3f,   HighPass},
    { 679.51f,  30.0f,   0.35f,  Bell    },
    {3682.0f,  -17.37f,  1.951f, Bell    },
    {6828.6f,    0.0f,   5.137f, LowPass },
};
inline constexpr FilterRow screamingPost[] = {
    {  41.5f,    0.0f,  10.5f,   HighPass},
    { 353.8f,   14.21f,  1.468f, Bell    },
    {1746.5f,   12.18f,  2.03f,  Bell    },
    {5284.3f,    0.0f,   4.86f,  LowPass },
};

inline constexpr FilterRow powerPre[] = {
    // Hz        dB      Q       shape
    {  26.0f,  -30.0f,  10.0f,   LowShelf},
    { 120.0f,    7.65f,  8.622f, Bell    },
    { 525.83f,  14.14f,  0.829f, Bell    },
    {2688.0f,    0.0f,   5.582f, LowPass },
};
inline constexpr FilterRow powerPost[] = {
    {  60.0f,   18.0f,   1.0f,   LowShelf},
    { 187.0f,   12.0f,   8.0f,   Bell    },
    {1200.0f,   10.0f,   2.0f,   Bell    },
};

inline constexpr FilterRow rectifyPost[] = {
    // Hz        dB      Q       shape     slope
    { 100.0f,    7.0f,   0.3f,   LowShelf, Poles2},
    {  24.0f,    0.0f,   1.0f,   HighPass, Poles4},
};

inline constexpr std::span<const FilterRow> none = {};

inline constexpr StyleRecipe styleRecipes[] = {
    //                                                   noise dB path  filters before, behind
    {CleanTube,        "Clean Tube",        None,     {-110.f, clips, cleanTubePre, cleanTubePost}},
    {WarmTube,         "Warm Tube",         None,     {-110.f, clips, warmTubePre,  warmTubePost}},
    {BrokenTube,       "Broken Tube",       None,     {-110.f, clips, brokenPre,    brokenPost}},
    {CleanTape,        "Clean Tape",        None,     {-110.f, clips, none,         none}},
    {WarmTape,         "Warm Tape",         None,     {-110.f, clips, warmTapePre,  warmTapePost}},
    {OldTape,          "Old Tape",          None,     {-110.f, clips, oldTapePre,   oldTapePost}},
    {SmoothAmp,        "Smooth Amp",        Speaker1, {-124.f, clips, smoothPre,    smoothPost}},
    {CrunchyAmp,       "Crunchy Amp",       Speaker2, {-124.f, clips, crunchyPre,   crunchyPost}},
    {LeadAmp,          "Lead Amp",          Speaker1, {-124.f, clips, leadPre,      leadPost}},
    {ScreamingAmp,     "Screaming Amp",     Speaker3, {-124.f, clips, screamingPre, screamingPost}},
    {PowerAmp,         "Power Amp",         Speaker4, {-124.f, clips, powerPre,     powerPost}},
    {GentleSaturation, "Gentle Saturation", None,     {-110.f, clips, none,         none}},
    {HeavySaturation,  "Heavy Saturation",  None,     {-110.f, clips, none,         none}},
    {Smudge,           "Smudge",            None,     {-110.f, smudges, none,         none}},
    {Rectify,          "Rectify",           None,     {-110.f, clips, none,         rectifyPost}},
    {Destroy,          "Destroy",           None,     {-110.f, crushes, none,         none}},
};
// clang-format on

/// Row i of both tables is style i, and its filters find room.
constexpr bool areCompleteAndOrdered() {
    if (std::size(styleRecipes) != numStyles || std::size(clipperRows) != numStyles) return false;
    for (int i = 0; i < numStyles; ++i) {
        const StyleRecipe& recipe = styleRecipes[i];
        if (recipe.id != StyleId{i} || clipperRows[i].id != StyleId{i}) return false;
        if (recipe.setup.pre.size() > EQStage::maxFilters) return false;
        if (recipe.setup.post.size() > EQStage::maxFilters) return false;
    }
    return true;
}
static_assert(areCompleteAndOrdered());
}  // namespace style_rows

using style_rows::clipperRows;
using style_rows::styleRecipes;

}  // namespace cinder
