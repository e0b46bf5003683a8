#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "modulation/matrix/ModulationMatrixOwner.h"
#include "params/AbstractPluginParameter.h"
#include "params/tree/ParameterRow.h"

namespace cinder {

/// Where a set stands among the modulation targets.
struct TargetPlace {
    ModulationMatrixOwner* owner = nullptr;
    int firstTarget = 0;
};

/// The parameters of a table.
/// State   what the rows say, from `initialize` on
class ParameterRows {
public:
    /// Makes them in the order of the rows, each with the name of its set in front.
    ParameterRows(GenericParameterOwner* owner, const std::string& setName,
                  std::span<const ParameterRow> rows, TargetPlace targets = {});

    /// Gives each one its range, default, unit, names and hint.
    void initialize();

    AbstractPluginParameter& at(int row) const {
        return *parameters[static_cast<std::size_t>(row)];
    }

private:
    std::span<const ParameterRow> rows;
    std::vector<std::unique_ptr<AbstractPluginParameter>> parameters;
};

}  // namespace cinder
