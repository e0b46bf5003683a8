#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "modulation/slots/ModulationSlotParameterSetList.h"
#include "modulation/slots/SourceParameterSetList.h"
#include "params/GenericPluginBase.h"

namespace cinder::test {

/// A set whose value says who it is; 0, the default, is nobody.
class TaggedSet final : public PluginParameterSet {
public:
    TaggedSet(GenericParameterOwner* owner, const std::string& name)
        : PluginParameterSet(owner, name), tag(this, name + " Tag", {0, 1 << 24, 0}) {}

    IndexedPluginParameter<int> tag;
};

inline auto makeTaggedSets(GenericParameterOwner* owner, const std::string& name) {
    return [=](int i) { return std::make_unique<TaggedSet>(owner, name + std::to_string(i + 1)); };
}

/// What has to live longer than the matrix.
struct SlotTreeGround {
    wave::Environment environment;
    std::vector<AbstractPluginParameter*> all;
};

/// One half of an instance with some of the product's lists: with a matrix or without.
class SlotTree final : SlotTreeGround, public GenericPluginBase, public ModulationMatrixOwner {
public:
    explicit SlotTree(bool hasMatrix) : GenericPluginBase(stereoLayout, 0, &all) {
        for (int i = 0; i < slots.setCount(); ++i)
            slots.slot(i).initialize();
        bands.addExtension(&bandExtensions);
        if (hasMatrix) createMatrix(&environment);
    }

    void beginUpdate() override { ++depth; }
    void endUpdate() override { numBrackets += --depth == 0 ? 1 : 0; }
    void parameterChanged(int id, float value, unsigned) override {
        changes.emplace_back(id, value);
        numOutside += depth == 0 ? 1 : 0;
    }
    void requestHostRefresh() override {}

    /// What the audio thread does with a value from its queue.
    void receive(int id, float value) noexcept CINDER_REALTIME {
        parameter(id)->storeValue(value);
        parameter(id)->applyValue(value);
    }

    std::vector<std::pair<int, float>> changes;  // of all parameters, in their order
    int depth = 0;
    int numBrackets = 0;  // that have ended
    int numOutside = 0;   // changes outside of any

private:
    const ModulationMatrixShape& shape = getShape() = ModulationMatrixShape::ofVocabulary();

public:
    TargetParameterSetList<TaggedSet> bands{this, "Bands", {1, 6, 1},
                                            this, {5, 13}, makeTaggedSets(this, "Band ")};
    SourceParameterSetList<TaggedSet> xys{
        this, "XYs", {0, 4, 0}, this, {}, {0, 2}, makeTaggedSets(this, "XY ")};
    SourceParameterSetList<TaggedSet> xlfos{
        this, "XLFOs", {0, 6, 0}, this, {83, 3}, {8, 1}, makeTaggedSets(this, "XLFO ")};
    ModulationSlotParameterSetList slots{this, this, shape};
    ParameterSetArray<TaggedSet> bandExtensions{6, makeTaggedSets(this, "Band State ")};
};

}  // namespace cinder::test
