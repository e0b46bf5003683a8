#pragma once

#include <string_view>
#include <vector>

#include "params/tree/CinderParameters.h"

namespace cinder {

/// A tree that belongs to no instance, for whoever reads, writes or converts settings. It has no
/// audio and no queue: a value takes effect when it is set.
/// State   the tree, with all at default
class StandaloneParameters final : private std::vector<AbstractPluginParameter*>,
                                   public GenericPluginBase,
                                   public ModulationMatrixOwner,
                                   public CinderParameters {
public:
    StandaloneParameters();

    void beginUpdate() override {}
    void endUpdate() override {}
    void requestHostRefresh() override {}
    void parameterChanged(int id, float value, unsigned flags) override;

    /// Null for a name that no parameter has.
    AbstractPluginParameter* named(std::string_view name) const;

    using CinderParameters::features;
    using CinderParameters::operator[];
};

}  // namespace cinder
