#include "distortion/styles/StyleSet.h"

namespace cinder {

StyleSet::StyleSet() {
    for (const StyleRecipe& recipe : styleRecipes)
        styles.push_back(std::make_unique<const DistortionStyle>(recipe.id));
    for (const CabinetRecipe& recipe : cabinetRecipes)
        cabinets.emplace_back(recipe);
}

const CabinetStyle* StyleSet::cabinetOf(StyleId id) const {
    const Cabinet cabinet = style(id).getRecipe().cabinet;
    return cabinet == Cabinet::None ? nullptr : &cabinets[static_cast<std::size_t>(cabinet)];
}

void StyleSet::addTo(DistortionController& controller) const {
    for (const auto& style : styles)
        controller.addStyle(style.get(), cabinetOf(style->getRecipe().id));
}

}  // namespace cinder
