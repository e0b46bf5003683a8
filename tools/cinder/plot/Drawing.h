#pragma once

#include "cinder/plot/Canvas.h"

namespace cinder {

/// Draws all of the figure on white: title, legend, and the panels in rows and columns. The axes of
/// a column are flush, whatever the width of their labels.
void drawFigure(Canvas& canvas, const Figure& figure);

}  // namespace cinder
