#pragma once

#include "distortion/styles/StyleRecipes.h"
#include "distortion/tone/CabinetStyle.h"

namespace cinder {

/// One of the 16 styles: its recipe, and the tables of its curve.
/// State   immutable once made: one object serves all bands of all instances
class DistortionStyle {
public:
    explicit DistortionStyle(StyleId id);  ///< [any, allocates]

    /// Takes effect at the next block. [audio]
    void apply(DistortionProcessor& processor) const noexcept CINDER_REALTIME;

    const StyleRecipe& getRecipe() const { return recipe; }
    const FunctionTableClipper::Style& getClipperStyle() const { return clipperStyle; }

private:
    const StyleRecipe& recipe;
    FunctionTableClipper::Style clipperStyle;
};

}  // namespace cinder
