#pragma once

#include "cinder/plot/Figure.h"
#include "cinder/plot/Response.h"
#include "dsp/filters/crossover/CrossoverTables.h"

#include <vector>

namespace cinder {

struct CrossoverPlot {
    std::vector<double> hz;  // of the crossovers, ascending; there is one band more
    CrossoverSlope slope = CrossoverSlope::Db24;
    double sampleRate = 48000.0;
};

/// What each band lets through, and their sum.
struct SplitResponse {
    std::vector<double> hz;
    std::vector<Response> bands;
    Response sum;

    /// By how many dB the sum leaves 0 dB at the most.
    double worstDb() const;
};
SplitResponse measureSplit(const CrossoverPlot& plot);

/// Magnitude and phase of every band and of the sum.
Figure crossoverFigure(const CrossoverPlot& plot);

/// Crossovers that make bands of as many octaves each, from 40 Hz to 18 kHz, in two digits.
std::vector<double> evenSplit(int numBands);

}  // namespace cinder
