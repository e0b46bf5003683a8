#pragma once

#include <string>
#include <vector>

#include "params/GenericParameterOwner.h"

namespace cinder {

/// The parameters of one band, one source or one slot. To them it is their owner, and whatever they
/// tell it goes on to its own owner; so ids stay flat, and a set may stand in a set.
///
///     class GainSet final : public PluginParameterSet {
///     public:
///         GainSet(GenericParameterOwner* owner, const std::string& name)
///             : PluginParameterSet(owner, name), level(this, name + " Level") {}
///         FloatPluginParameter level;
///     };
///
/// State   the order of its parameters, which are members of the derived class, those of inner sets
///         included
class PluginParameterSet : public GenericParameterOwner {
public:
    /// Sets of one name share a group.
    PluginParameterSet(GenericParameterOwner* owner, const std::string& groupName)
        : groupId(owner->addGroup(groupName)), owner(owner) {}
    PluginParameterSet(const PluginParameterSet&) = delete;
    PluginParameterSet& operator=(const PluginParameterSet&) = delete;

    void beginUpdate() override { owner->beginUpdate(); }
    void addResponder(ParameterResponder* responder) override { owner->addResponder(responder); }
    void endUpdate() override { owner->endUpdate(); }
    int parameterCount() const override { return static_cast<int>(parameters.size()); }
    /// By the place in the set, not by id; null behind the end.
    AbstractPluginParameter* parameter(int index) const override;
    int group() const override { return groupId; }
    void parameterChanged(int id, float value, unsigned flags) override {
        owner->parameterChanged(id, value, flags);
    }
    int addParameter(AbstractPluginParameter* parameter) override;
    int addGroup(const std::string& name) override { return owner->addGroup(name); }
    void requestHostRefresh() override { owner->requestHostRefresh(); }
    /// Gives the parameters their ranges, units, names and hints, once the whole tree stands.
    virtual void initialize() {}

    /// Every parameter gets the value of its like in another set of the same class.
    void copyFrom(const PluginParameterSet& other);
    void resetToDefaults();

private:
    const int groupId;
    GenericParameterOwner* const owner;
    std::vector<AbstractPluginParameter*> parameters;
};

}  // namespace cinder
