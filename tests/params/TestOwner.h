#pragma once

#include <vector>

#include "params/AbstractPluginParameter.h"
#include "params/GenericPluginBase.h"

namespace cinder::test {

/// Writes down what its parameters tell it, and applies it at once where a test says so.
class TestOwner final : public GenericPluginBase {
public:
    explicit TestOwner(bool appliesAtOnce = false)
        : GenericPluginBase(stereoLayout, 0, &list), appliesAtOnce(appliesAtOnce) {}

    void beginUpdate() override { ++depth; }
    void endUpdate() override { --depth; }
    void parameterChanged(int id, float value, unsigned flags) override {
        told.push_back({id, value, flags, depth});
        if (appliesAtOnce) parameter(id)->applyValue(value);
    }
    void requestHostRefresh() override {}

    struct Told {
        int id;
        float value;
        unsigned flags;
        int depth;  // of the brackets around it
        bool operator==(const Told&) const = default;
    };
    std::vector<Told> told;
    int depth = 0;

private:
    const bool appliesAtOnce;
    std::vector<AbstractPluginParameter*> list;
};

}  // namespace cinder::test
