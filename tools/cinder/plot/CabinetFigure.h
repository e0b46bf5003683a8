#pragma once

#include "cinder/plot/Figure.h"
#include "distortion/tone/CabinetRecipes.h"

namespace cinder {

struct CabinetPlot {
    Cabinet cabinet = Cabinet::Speaker1;
    double sampleRate = 48000.0;
};

/// Impulse response and magnitude of a cabinet, and of its echoes and filters alone.
Figure cabinetFigure(const CabinetPlot& plot);

}  // namespace cinder
