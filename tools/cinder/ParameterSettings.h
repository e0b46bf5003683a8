#pragma once

#include "cinder/ParameterRow.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cinder {

/// A value for each parameter: its default, or what a text NAME=VALUE says. Names and choices are
/// found in upper and lower case; of two texts for the same parameter the last one counts.
/// Errors  UsageError, which says what there is: unknown name, value out of range or no number;
///         ids are rows of the table
class ParameterSettings {
public:
    ParameterSettings(std::span<const ParameterRow> rows, std::span<const std::string> texts);

    /// In the order of the rows.
    const std::vector<float>& values() const { return current; }
    float operator[](int id) const { return current[static_cast<std::size_t>(id)]; }
    /// Whether one of the texts was for this parameter.
    bool isGiven(int id) const { return given[static_cast<std::size_t>(id)]; }
    /// A value in the place of the default, where no text says otherwise.
    void suggest(int id, float value);
    /// The same for a value in words.
    void suggest(int id, std::string_view value);
    /// "Drive 12 dB, Curve arc tangent, ..."
    std::string text() const;
    /// "12 dB"
    std::string valueText(int id) const;

private:
    void assign(const std::string& text);

    std::span<const ParameterRow> rows;
    std::vector<float> current;
    std::vector<bool> given;
};

std::string_view withoutBlanks(std::string_view text);

/// Name, range, default and hint of each parameter, for --help.
std::string parameterHelp(std::span<const ParameterRow> rows);

}  // namespace cinder
