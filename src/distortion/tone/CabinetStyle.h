#pragma once

#include "distortion/tone/CabinetRecipes.h"

namespace cinder {

/// What a cabinet is made of; this one is no cabinet.
/// State   none: one object serves all bands of all instances
class CabinetStyle {
public:
    virtual ~CabinetStyle() = default;
    /// Fills the cabinet anew. It takes effect at the next block, without a fade. [audio]
    virtual void apply(CabinetProcessor& cabinet) const noexcept CINDER_REALTIME {
        cabinet.clear();
    }
};

/// One by a recipe.
class CinderCabinetStyle final : public CabinetStyle {
public:
    explicit CinderCabinetStyle(const CabinetRecipe& recipe) : recipe(recipe) {}

    void apply(CabinetProcessor& cabinet) const noexcept CINDER_REALTIME override {
        CabinetStyle::apply(cabinet);
        for (const TapRow& tap : recipe.taps)
            cabinet.addTap(tap);
        for (const FilterRow& row : recipe.filters)
            cabinet.addFilter(row);
    }
    const CabinetRecipe& getRecipe() const { return recipe; }

private:
    CabinetRecipe recipe;  // views of tables that outlive it
};

}  // namespace cinder
