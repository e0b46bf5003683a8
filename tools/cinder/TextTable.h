#pragma once

#include <string>
#include <vector>

namespace cinder {

/// Text in columns, two blanks apart.
/// Shape   one letter per column: l stands to the left, r to the right; a row may be shorter
/// Range   cells are UTF-8, one place per character
class TextTable {
public:
    explicit TextTable(std::string alignment) : alignment(std::move(alignment)) {}

    void addRow(std::vector<std::string> cells);
    /// All rows, each with its line end and no blanks before it.
    std::string text() const;

private:
    std::string alignment;
    std::vector<std::vector<std::string>> rows;
};

}  // namespace cinder
