#pragma once

#include "cinder/plot/Figure.h"

#include <vector>

namespace cinder {

struct TonePlot {
    std::vector<double> gainsDb = {-24.0, -12.0, -6.0, 6.0, 12.0, 24.0};
    double sampleRate = 48000.0;
};

/// Each of the four tone controls of a band by itself, at several gains.
Figure toneFigure(const TonePlot& plot);

}  // namespace cinder
