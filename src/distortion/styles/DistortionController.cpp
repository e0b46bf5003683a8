#include "distortion/styles/DistortionController.h"

namespace cinder {

void DistortionController::addStyle(const DistortionStyle* distortion,
                                    const CabinetStyle* cabinet) {
    styles.push_back({distortion, cabinet});
    if (static_cast<int>(styles.size()) == style + 1) applyStyle();
}

void DistortionController::addProcessors(DistortionProcessor* distortion,
                                         CabinetProcessor* cabinet) {
    channels.push_back({distortion, cabinet});
}

void DistortionController::applyStyle() noexcept CINDER_REALTIME {
    const auto index = static_cast<std::size_t>(style.get());  // below 0 it is beyond the end
    const Style chosen = index < styles.size() ? styles[index] : Style{};
    for (const Channel& channel : channels) {
        if (channel.distortion) {
            if (chosen.distortion)
                chosen.distortion->apply(*channel.distortion);
            else
                channel.distortion->resetToNeutral();
        }
        if (channel.cabinet) {
            if (chosen.cabinet)
                chosen.cabinet->apply(*channel.cabinet);
            else
                channel.cabinet->clear();
        }
    }
}

void DistortionController::propertyChanged(AbstractProperty* property) {
    if (property == &style) applyStyle();
}

}  // namespace cinder
