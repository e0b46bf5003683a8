#include "distortion/styles/DistortionStyle.h"

namespace cinder {

DistortionStyle::DistortionStyle(StyleId id) : recipe(styleRecipes[static_cast<int>(id)]) {
    const ClipperRow& row = clipperRows[static_cast<int>(id)];
    makeStyle(clipperStyle, row.curve, row.power, row.negativeScale, row.driveMinDb, row.driveMaxDb,
              row.referenceLevelDb, row.outputDb);
}

void DistortionStyle::apply(DistortionProcessor& processor) const noexcept CINDER_REALTIME {
    // Where the clipper has no part it fades out as it was.
    if (recipe.setup.path.clip == 1) processor.setClipperStyle(&clipperStyle);
    processor.setUp(recipe.setup);
}

}  // namespace cinder
