#include "cinder/measure/StyleTable.h"

#include <cmath>
#include <cstdio>

namespace cinder {

namespace {

// clang-format off
constexpr StyleColumn columns[] = {
    // what      which      unit
    {"THD",      "0",       "%",      false},
    {"THD",      "50",      "%",      false},
    {"THD",      "100",     "%",      false},
    {"even",     "100",     "%",      false},
    {"alias",    "1x",      "dB",     false},
    {"alias",    "8x",      "dB",     false},
    {"level",    "50",      "dB",     false},
    {"level",    "100",     "dB",     false},
    {"DC",       "100",     "dBFS",   false},
    {"noise",    "loud",    "dBFS",   false},
    {"noise",    "quiet",   "dBFS",   false},
    {"cost",     "1x",      "copies", true},
    {"cost",     "8x",      "copies", true},
};
// clang-format on

std::string number(const char* format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string percent(double share) {
    return number("%.2f", 100.0 * share);
}

std::string decibels(double db) {
    constexpr double lowest = -150.0;  // the rounding of the samples is near
    if (db < lowest) return "none";
    const std::string text = number("%.1f", db);
    return text == "-0.0" ? "0.0" : text;
}

}  // namespace

std::span<const StyleColumn> styleColumns() {
    return columns;
}

std::vector<std::string> styleCells(StyleId style, const StyleMeasures& measures,
                                    const std::optional<StyleCost>& cost) {
    std::vector<std::string> cells = {styleRecipes[static_cast<int>(style)].name};
    for (const double share : measures.harmonics)
        cells.push_back(percent(share));
    cells.push_back(percent(measures.even));
    const double decibelCells[] = {measures.aliasDb[0], measures.aliasDb[1], measures.levelDb[0],
                                   measures.levelDb[1], measures.offsetDb,   measures.noiseDb[0],
                                   measures.noiseDb[1]};
    for (const double db : decibelCells)
        cells.push_back(decibels(db));
    for (int i = 0; i < 2; ++i)
        cells.push_back(cost ? number("%.0f", cost->copies[i]) : std::string());
    return cells;
}

std::string styleMarkdownRow(const std::vector<std::string>& cells) {
    std::string line = "|";
    for (const std::string& cell : cells)
        line += ' ' + cell + " |";
    return line + '\n';
}

std::string styleMarkdownHead() {
    std::vector<std::string> titles = {"Style"}, rules = {"---"};
    for (const StyleColumn& column : columns) {
        titles.push_back(std::string(column.what) + ' ' + column.which + ", " + column.unit +
                         (column.hangsOnMachine ? "*" : ""));
        rules.push_back("---:");
    }
    return styleMarkdownRow(titles) + styleMarkdownRow(rules);
}

}  // namespace cinder
