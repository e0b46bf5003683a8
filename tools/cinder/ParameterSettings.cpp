#include "cinder/ParameterSettings.h"

#include "cinder/OptionValues.h"
#include "cinder/TextTable.h"
#include "cinder/UsageError.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

namespace cinder {

namespace {

constexpr std::size_t mostChoicesInRow = 8;
constexpr std::size_t lineWidth = 80;

std::string inQuotes(std::string_view text) {
    return quoted(std::filesystem::path(text));
}

std::string joined(std::span<const char* const> names) {
    std::string all;
    for (const char* name : names)
        all += (all.empty() ? "" : ", ") + std::string(name);
    return all;
}

std::string withUnit(const std::string& number, const ParameterRow& row) {
    return *row.unit ? number + ' ' + row.unit : number;
}

std::string rangeText(const ParameterRow& row) {
    if (!row.choices.empty()) return joined(row.choices);
    return withUnit(numberText(row.minimum) + " to " + numberText(row.maximum), row);
}

std::string textOf(const ParameterRow& row, float value) {
    if (!row.choices.empty()) return row.choices[static_cast<std::size_t>(value - row.minimum)];
    return withUnit(numberText(value), row);
}

/// A number, or a number and the unit.
std::optional<double> parseWithUnit(std::string_view text, std::string_view unit) {
    if (text.size() > unit.size() && isSameName(text.substr(text.size() - unit.size()), unit))
        text = withoutBlanks(text.substr(0, text.size() - unit.size()));
    return parseNumber(text);
}

float parseValue(const ParameterRow& row, std::string_view text) {
    for (std::size_t i = 0; i < row.choices.size(); ++i)
        if (isSameName(row.choices[i], text)) return row.minimum + static_cast<float>(i);
    if (row.choices.empty()) {
        const auto value = parseWithUnit(text, row.unit);
        if (value && *value >= static_cast<double>(row.minimum) &&
            *value <= static_cast<double>(row.maximum))
            return static_cast<float>(*value);
    }
    throw UsageError(std::string(row.name) + " takes " + (row.choices.empty() ? "" : "one of ") +
                     rangeText(row) + ", not " + inQuotes(text));
}

/// "  Curve: arc tangent, ...", in lines that fit a terminal.
std::string listInLines(const ParameterRow& row) {
    std::string lines;
    std::string line = std::string("  ") + row.name + ":";
    for (const char* const& choice : row.choices) {
        const bool isLast = &choice == &row.choices.back();
        const std::string word = std::string(" ") + choice + (isLast ? "" : ",");
        if (line.size() + word.size() > lineWidth) {
            lines += line + '\n';
            line = "   ";
        }
        line += word;
    }
    return lines + line + '\n';
}

}  // namespace

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

ParameterSettings::ParameterSettings(std::span<const ParameterRow> rows,
                                     std::span<const std::string> texts)
    : rows(rows), given(rows.size(), false) {
    for (const ParameterRow& row : rows)
        current.push_back(row.defaultValue);
    for (const std::string& text : texts)
        assign(text);
}

void ParameterSettings::assign(const std::string& text) {
    const auto equals = text.find('=');
    const std::string_view name = withoutBlanks(std::string_view(text).substr(0, equals));
    if (equals == std::string::npos || name.empty())
        throw UsageError("--set takes NAME=VALUE, not " + inQuotes(text));
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const ParameterRow& candidate) {
        return isSameName(candidate.name, name);
    });
    if (row == rows.end()) {
        std::vector<const char*> names;
        for (const ParameterRow& known : rows)
            names.push_back(known.name);
        throw UsageError("there is no parameter " + inQuotes(name) + "; there are " +
                         joined(names));
    }
    const auto id = static_cast<std::size_t>(row - rows.begin());
    current[id] = parseValue(*row, withoutBlanks(std::string_view(text).substr(equals + 1)));
    given[id] = true;
}

void ParameterSettings::suggest(int id, float value) {
    if (!isGiven(id)) current[static_cast<std::size_t>(id)] = value;
}

/// Nonsense is reported whether or not it would count.
void ParameterSettings::suggest(int id, std::string_view value) {
    suggest(id, parseValue(rows[static_cast<std::size_t>(id)], value));
}

std::string ParameterSettings::valueText(int id) const {
    return textOf(rows[static_cast<std::size_t>(id)], current[static_cast<std::size_t>(id)]);
}

std::string ParameterSettings::text() const {
    std::string all;
    for (std::size_t i = 0; i < rows.size(); ++i)
        all += (i == 0 ? "" : ", ") + std::string(rows[i].name) + ' ' + textOf(rows[i], current[i]);
    return all;
}

std::string parameterHelp(std::span<const ParameterRow> rows) {
    TextTable table("llll");
    std::string lists;
    for (const ParameterRow& row : rows) {
        const bool isLong = row.choices.size() > mostChoicesInRow;
        if (isLong) lists += listInLines(row);
        table.addRow({std::string("  ") + row.name, isLong ? "a name" : rangeText(row),
                      "default " + textOf(row, row.defaultValue), row.hint});
    }
    return table.text() + lists;
}

}  // namespace cinder
