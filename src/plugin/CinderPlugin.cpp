#include "plugin/CinderPlugin.h"

#include <string>

#include "presets/format/ComponentKind.h"

namespace cinder {
namespace {

constexpr GenericPluginBase::RealtimeCounts offered = {1, 0, 0, 0};  // what is heard, as audio

constexpr int narrowWidth = 720, wideWidth = 926;
constexpr int lowHeight = 368, fullHeight = 560;  // without and with the modulation section

}  // namespace

CinderPlugin::CinderPlugin(std::int32_t channelLayout)
    : ModulationMatrixPlugin(channelLayout, CinderParameters::features, offered),
      CinderParameters(this, this) {
    init("Cinder");
    fillComponentCollections();
    CinderParameters::initialize();
    updateLatency();
    loadDefaultPreset();
}

void CinderPlugin::fillComponentCollections() {
    const AbstractParameterSetArray* const lists[] = {&bands, &xlfos, &egs, &efs, &midiSources};
    for (int kind = bandKind; kind <= midiKind; ++kind) {
        const AbstractParameterSetArray& list = *lists[kind];
        addComponentCollections(kind, list.setCount());
        for (int i = 0; i < list.setCount(); ++i) {
            const PluginParameterSet& set = *list.set(i);
            // Loading a band must not move its neighbour: the crossover, its last one, stays.
            const int count = set.parameterCount() - (kind == bandKind ? 1 : 0);
            auto& parameters = componentCollection(kind, i)->parameters;
            for (int place = 0; place < count; ++place)
                parameters.push_back(set.parameter(place));
        }
    }
}

std::unique_ptr<Settings> CinderPlugin::createSettings() {
    auto made = std::make_unique<CinderSettings>(getShared().productKey());
    cinderSettings = made.get();
    return made;
}

void CinderPlugin::createSharedObjects(const std::string& productName) {
    ModulationMatrixPlugin::createSharedObjects(productName);
    for (const cinder::ComponentKind& kind : componentKinds())
        getShared().addComponentPresetManager(std::string(kind.extension),
                                              std::string(kind.folder));
}

int CinderPlugin::contentWidth() const {
    return cinderSettings->layout.get() == InterfaceLayout::Wide ? wideWidth : narrowWidth;
}

int CinderPlugin::contentHeight() const {
    return cinderSettings->showModulation ? fullHeight : lowHeight;
}

void CinderPlugin::parameterValueApplied(int id) {
    if (id == -1 || id == (*this)[GlobalChoiceParameter::HighQuality].getId()) updateLatency();
}

void CinderPlugin::updateLatency() {
    setLatency(CinderParameters::latency(static_cast<double>(getSampleRate())));
}

}  // namespace cinder
