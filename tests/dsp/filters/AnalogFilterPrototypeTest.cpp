#include "dsp/filters/AnalogFilterPrototype.h"

#include <doctest/doctest.h>

#include <string>

#include "dsp/filters/ClosedForm.h"

namespace cinder {
namespace {

double designQ(FilterShape shape, double rawQ) {
    return rowOf(shape).qLaw == QLaw::Shelf
               ? std::pow(32.0, std::log(rawQ) * 0.13554251 + 0.5) / 8.0
               : rawQ * 0.70710677;
}

TEST_CASE("AnalogFilterPrototype: magnitude is that of the closed form, however it is asked for") {
    AnalogFilterPrototype prototype;
    for (const FilterShapeRow& row : filterShapes)
        for (int slope = 0; slope < numFilterSlopes; ++slope)
            for (const double gainDb : {-30.0, -0.01, 6.0, 30.0})
                for (const double rawQ : {0.025, 0.6, 1.0, 5.0, 40.0}) {
                    INFO(std::string(row.name)
                         << ", slope " << slope << ", " << gainDb << " dB, Q " << rawQ);
                    const int poles = polesOf(static_cast<FilterSlope>(slope), row.shape);
                    prototype.design(row.shape, poles, std::pow(10.0, gainDb / 20.0),
                                     designQ(row.shape, rawQ));
                    CHECK(prototype.getNumSections() == (poles + 1) / 2);
                    const double centre = 0.31 + 0.1 * slope;
                    prototype.setFrequency(centre, 1.0 / centre);
                    for (const double w : {0.01, 0.7, 0.99, 1.0, 1.02, 3.0, 60.0}) {
                        INFO("at " << w << " times the centre");
                        const double wanted = test::closedForm(row.shape, poles, gainDb, rawQ, w);
                        const double at = w * centre;
                        const double answer = prototype.getMagnitudeSquared(at);
                        // Near the end of a narrow resonance the polynomials cancel.
                        CHECK(answer == doctest::Approx(wanted).epsilon(2e-5).scale(0.0));
                        CHECK(std::norm(prototype.getResponse(at)) ==
                              doctest::Approx(wanted).epsilon(2e-5).scale(0.0));
                        const auto frequency = static_cast<float>(at);
                        float inBlock = -1.0f;
                        prototype.getMagnitudeSquared(&frequency, &inBlock, 1);
                        const double exactly =
                            prototype.getMagnitudeSquared(static_cast<double>(frequency));
                        if (exactly > 1e-30 && exactly < 1e30)
                            CHECK(static_cast<double>(inBlock) ==
                                  doctest::Approx(exactly).epsilon(1e-6).scale(0.0));
                    }
                }
}

}  // namespace
}  // namespace cinder
