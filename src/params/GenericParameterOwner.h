#pragma once

#include <string>

namespace cinder {

class AbstractPluginParameter;
class ParameterResponder;

/// What a parameter, or a set of parameters, needs of the object it belongs to. Both halves of an
/// instance implement it, each for its own copy of the parameters, so a set works the same
/// whichever half owns it. Ids are flat: a parameter's id is the place at which it was added.
class GenericParameterOwner {
public:
    virtual ~GenericParameterOwner() = default;

    /// Between these two any number of changes counts as one. Brackets nest. [any]
    virtual void beginUpdate() = 0;
    virtual void addResponder(ParameterResponder* responder) = 0;
    virtual void endUpdate() = 0;

    virtual int parameterCount() const = 0;
    /// Null for an id that has no parameter.
    virtual AbstractPluginParameter* parameter(int id) const = 0;
    virtual int group() const = 0;

    /// A parameter has a new value. The flags are those of `AbstractPluginParameter::setValue`.
    virtual void parameterChanged(int id, float value, unsigned flags) = 0;

    /// Answers with the parameter's id.
    virtual int addParameter(AbstractPluginParameter* parameter) = 0;
    /// Answers with the id of the group of that name.
    virtual int addGroup(const std::string& name) = 0;
    /// What changes in the open bracket is a new state as a whole, not a movement of controls.
    virtual void requestHostRefresh() = 0;
};

}  // namespace cinder
