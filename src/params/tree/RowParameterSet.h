#pragma once

#include "params/PluginParameterSet.h"
#include "params/tree/ParameterRows.h"

namespace cinder {

/// A set whose parameters stand in a table, and whose rows are named by the enumeration `Row`.
template <typename Row>
class RowParameterSet : public PluginParameterSet {
public:
    /// Sets of one group name share a group; `setName` stands in front of the parameters' names.
    RowParameterSet(GenericParameterOwner* owner, const std::string& groupName,
                    const std::string& setName, std::span<const ParameterRow> rows,
                    TargetPlace targets = {})
        : PluginParameterSet(owner, groupName), rows(this, setName, rows, targets) {}

    void initialize() override { rows.initialize(); }

    AbstractPluginParameter& operator[](Row row) const { return rows.at(static_cast<int>(row)); }
    /// As the class that the row's kind stands for.
    /// Errors  std::bad_cast for another class
    template <typename Parameter>
    Parameter& as(Row row) const {
        return dynamic_cast<Parameter&>((*this)[row]);
    }

private:
    ParameterRows rows;
};

}  // namespace cinder
