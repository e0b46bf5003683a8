#pragma once

#include <string>
#include <vector>

namespace cinder {

enum class ListFormat { Table, Csv, Json };

/// Rows below their titles.
struct Listing {
    struct Column {
        std::string title;
        bool isNumber = false;
    };
    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows;
};

/// Table and CSV have a line for the titles and one a row, and turn line breaks into blanks; JSON
/// is a list of objects. Numbers stand to the right, and bare in JSON; an empty cell is null there.
std::string textOf(const Listing& listing, ListFormat format);

}  // namespace cinder
