#include "cinder/TextTable.h"

#include <algorithm>
#include <cassert>
#include <cstddef>

namespace cinder {

namespace {

std::size_t placesOf(const std::string& utf8) {
    const auto isFirstByte = [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; };
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), isFirstByte));
}

}  // namespace

void TextTable::addRow(std::vector<std::string> cells) {
    assert(cells.size() <= alignment.size());
    rows.push_back(std::move(cells));
}

std::string TextTable::text() const {
    std::vector<std::size_t> widths(alignment.size(), 0);
    for (const auto& row : rows)
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], placesOf(row[column]));
    std::string all;
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string blanks(widths[column] - placesOf(row[column]), ' ');
            if (column > 0) line += "  ";
            line += alignment[column] == 'r' ? blanks + row[column] : row[column] + blanks;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        all += line + '\n';
    }
    return all;
}

}  // namespace cinder
