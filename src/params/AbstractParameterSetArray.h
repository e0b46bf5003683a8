#pragma once

#include <vector>

#include "params/PluginParameterSet.h"

namespace cinder {

/// A fixed number of sets, whose parameters follow one another in the flat list.
class AbstractParameterSetArray {
public:
    AbstractParameterSetArray() = default;
    AbstractParameterSetArray(const AbstractParameterSetArray&) = delete;
    AbstractParameterSetArray& operator=(const AbstractParameterSetArray&) = delete;
    virtual ~AbstractParameterSetArray() = default;

    /// Appends all parameters, in the order of their ids.
    virtual void collectParameters(std::vector<AbstractPluginParameter*>& parameters);
    /// Whether one of its parameters has this id; for -1, whether it has any parameter.
    virtual bool containsId(int id) const;
    virtual int setCount() const = 0;
    /// Null for an index without a set.
    virtual PluginParameterSet* set(int index) const = 0;
    virtual void resetToDefaults();
    /// -1 without parameters.
    virtual int firstId() const;

    /// Between two sets of the array, if it has both.
    void copySet(int from, int to);
    void resetSet(int index);

protected:
    int lastId() const;
};

}  // namespace cinder
