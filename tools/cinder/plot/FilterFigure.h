#pragma once

#include "cinder/plot/Figure.h"
#include "dsp/filters/FilterTables.h"

namespace cinder {

struct FilterPlot {
    FilterShape shape = FilterShape::Bell;
    FilterSlope slope = FilterSlope::Poles2;
    double hz = 1000.0;
    double gainDb = 6.0;
    double q = 1.0;
    double sampleRate = 48000.0;
};

/// Magnitude and phase of an equaliser as it runs, and of the analog filter that it follows.
Figure filterFigure(const FilterPlot& plot);

}  // namespace cinder
