#pragma once

#include "cinder/shaper/ShaperParameters.h"

#include <span>
#include <string>
#include <vector>

namespace cinder {

/// A value for each parameter: its default, or what a text NAME=VALUE says. Names and choices are
/// found in upper and lower case; of two texts for the same parameter the last one counts.
/// Errors  UsageError, which says what there is: unknown name, value out of range or no number
class ParameterSettings {
public:
    ParameterSettings(std::span<const ParameterRow> rows, std::span<const std::string> texts);

    /// In the order of the rows.
    const std::vector<float>& values() const { return current; }
    /// "Drive 12 dB, Curve arc tangent, ..."
    std::string text() const;

private:
    void assign(const std::string& text);

    std::span<const ParameterRow> rows;
    std::vector<float> current;
};

/// Name, range, default and hint of each parameter, for --help.
std::string parameterHelp(std::span<const ParameterRow> rows);

}  // namespace cinder
