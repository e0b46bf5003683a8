#pragma once

#include <memory>
#include <vector>

#include "distortion/styles/DistortionController.h"

namespace cinder {

/// All styles with their cabinets, in the order of their rows; one set serves a whole process.
/// State   immutable once made
class StyleSet {
public:
    StyleSet();  ///< [any, allocates]

    const DistortionStyle& style(StyleId id) const { return *styles[static_cast<std::size_t>(id)]; }
    /// Null for none.
    const CabinetStyle* cabinetOf(StyleId id) const;
    /// Gives a band its list of styles.
    void addTo(DistortionController& controller) const;

private:
    std::vector<std::unique_ptr<const DistortionStyle>> styles;
    std::vector<CinderCabinetStyle> cabinets;
};

}  // namespace cinder
