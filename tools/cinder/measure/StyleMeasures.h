#pragma once

#include "distortion/styles/StyleSet.h"

namespace cinder {

/// The tone that a style is measured with.
struct StyleMeasurement {
    int sampleRate = 48000;
    double levelDb = -12.0;  // its peak
};

/// What a style does to a tone, distortion and cabinet in one channel; docs/styles.md defines each.
/// Range   shares 0..1; decibels of nothing are -infinity
struct StyleMeasures {
    static constexpr double drives[] = {0.0, 0.5, 1.0};
    static constexpr int factors[] = {1, 8};

    double harmonics[3];  // by drive: RMS of harmonics 2 to 20 against that of 1 to 20
    double even;          // at full drive: the even ones of them, likewise
    double aliasDb[2];    // by factor, at full drive
    double levelDb[2];    // at half and full drive, against drive 0
    double offsetDb;      // DC at full drive
    double noiseDb[2];    // at full drive: under the tone, and under one 48 dB lower
};

StyleMeasures measureStyle(const StyleSet& styles, StyleId style,
                           const StyleMeasurement& measurement);

/// What a sample costs, in copies of a sample, by factor: a block through the style against memcpy
/// of one in turns, the median of many. Hangs on the machine. [any, looks at a clock]
struct StyleCost {
    double copies[2];
};

StyleCost measureStyleCost(const StyleSet& styles, StyleId style, int sampleRate);

}  // namespace cinder
