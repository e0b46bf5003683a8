#pragma once

#include "cinder/plot/Figure.h"
#include "distortion/styles/StyleRecipes.h"

#include <vector>

namespace cinder {

struct StylePlot {
    StyleId style = StyleId::CleanTube;
    std::vector<double> drives = {0.0, 50.0, 100.0};  // percent
    double levelDb = -12.0;                           // peak of the sine
    int sampleRate = 48000;
    bool cabinet = false;  // that of the style, if it has one
};

/// What a style makes of a sine of 997 Hz that has lasted for a second: output against input, the
/// wave, and its spectrum.
Figure styleFigure(const StylePlot& plot);

}  // namespace cinder
