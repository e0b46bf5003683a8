#pragma once

#include <vector>

#include "core/Property.h"
#include "distortion/styles/DistortionStyle.h"

namespace cinder {

/// Applies the style of a band to the distortions and cabinets of all its channels.
/// Range   style 0..styles - 1; any other one is neutral and has no cabinet
/// State   the lists; what stands in them is not owned
class DistortionController final : public PropertyOwner {
public:
    /// A null cabinet is none. Applied at once where it is the style at hand.
    void addStyle(const DistortionStyle* distortion, const CabinetStyle* cabinet);
    /// Either may be null. What is added is as it was until the style is applied.
    void addProcessors(DistortionProcessor* distortion, CabinetProcessor* cabinet);
    /// [audio]
    void applyStyle() noexcept CINDER_REALTIME;
    void propertyChanged(AbstractProperty* property) override;  ///< [audio]

    Property<int> style{0, this};

private:
    struct Style {
        const DistortionStyle* distortion = nullptr;
        const CabinetStyle* cabinet = nullptr;
    };
    struct Channel {
        DistortionProcessor* distortion;
        CabinetProcessor* cabinet;
    };

    std::vector<Style> styles;
    std::vector<Channel> channels;
};

}  // namespace cinder
