#pragma once

#include "params/tree/CinderParameters.h"
#include "plugin/ModulationMatrixPlugin.h"

namespace cinder {

/// The product's plug-in half: its constants, its parameters, and what its component presets cover.
class CinderPlugin final : public ModulationMatrixPlugin, public CinderParameters {
public:
    /// Kinds of component presets.
    enum ComponentKind : int { bandKind = 0, xlfoKind, egKind, efKind, midiKind };

    /// Starts from the user's default preset, if there is one.
    explicit CinderPlugin(std::int32_t channelLayout);

    int pluginCategory() const override { return 6; }
    std::string_view productCode() const override { return "KCnd"; }
    std::string_view productVersion() const override { return "1.00"; }
    std::int32_t formatVersion() const override { return 4; }
    int contentWidth() const override;
    int contentHeight() const override;
    int maximumContentWidth() const override { return 926; }
    int maximumContentHeight() const override { return 560; }
    const CinderSettings& getCinderSettings() const { return *cinderSettings; }
    CinderSettings& getCinderSettings() { return *cinderSettings; }

    using CinderParameters::features;

protected:
    std::unique_ptr<Settings> createSettings() override;
    void createSharedObjects(const std::string& productName) override;
    void parameterValueApplied(int id) override;
    void updateLatency() override;

private:
    void fillComponentCollections();

    CinderSettings* cinderSettings = nullptr;  // owned by the base
};

}  // namespace cinder
