#pragma once

#include "cinder/measure/StyleMeasures.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace cinder {

/// A column of docs/styles.md: what, of which kind, in which unit.
struct StyleColumn {
    const char* what;
    const char* which;
    const char* unit;
    bool hangsOnMachine;
};

std::span<const StyleColumn> styleColumns();

/// The style's name, then a cell for each column; "none" for less than -150 dB. Without a cost
/// those cells stay empty.
std::vector<std::string> styleCells(StyleId style, const StyleMeasures& measures,
                                    const std::optional<StyleCost>& cost);

/// The two lines above the rows, and a row: with their line ends.
std::string styleMarkdownHead();
std::string styleMarkdownRow(const std::vector<std::string>& cells);

}  // namespace cinder
