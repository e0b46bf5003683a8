#include "cinder/vocabulary/Listing.h"

#include <nlohmann/json.hpp>

#include "cinder/TextTable.h"

namespace cinder {

namespace {

std::string inOneLine(const std::string& text) {
    std::string line;
    for (const char c : text) {
        const bool isBlank = c == '\n' || c == ' ';
        const bool isControl = (c >= 0 && c < ' ') || c == '\x7f';
        if (!isBlank) line += isControl ? '?' : c;
        if (isBlank && !line.empty() && line.back() != ' ') line += ' ';
    }
    return line;
}

/// In quotes where a comma or a quote asks for it (RFC 4180).
std::string csvCell(const std::string& text) {
    const std::string line = inOneLine(text);
    if (line.find_first_of(",\"\r") == std::string::npos) return line;
    std::string quoted = "\"";
    for (const char c : line)
        quoted.append(c == '"' ? 2 : 1, c);
    quoted += '"';
    return quoted;
}

std::string csvLine(const std::vector<std::string>& cells) {
    std::string line;
    for (const std::string& cell : cells) {
        if (&cell != &cells.front()) line += ',';
        line += csvCell(cell);
    }
    line += '\n';
    return line;
}

std::vector<std::string> titlesOf(const Listing& listing) {
    std::vector<std::string> titles;
    for (const Listing::Column& column : listing.columns)
        titles.push_back(column.title);
    return titles;
}

std::string csvOf(const Listing& listing) {
    std::string text = csvLine(titlesOf(listing));
    for (const auto& row : listing.rows)
        text += csvLine(row);
    return text;
}

std::string tableOf(const Listing& listing) {
    std::string alignment;
    for (const Listing::Column& column : listing.columns)
        alignment += column.isNumber ? 'r' : 'l';
    TextTable table(alignment);
    table.addRow(titlesOf(listing));
    for (const auto& row : listing.rows) {
        std::vector<std::string> cells;
        for (const std::string& cell : row)
            cells.push_back(inOneLine(cell));
        table.addRow(cells);
    }
    return table.text();
}

std::string jsonOf(const Listing& listing) {
    auto all = nlohmann::ordered_json::array();
    for (const auto& row : listing.rows) {
        nlohmann::ordered_json object;
        for (std::size_t i = 0; i < row.size(); ++i) {
            auto& cell = object[listing.columns[i].title];
            if (row[i].empty()) continue;  // stays null
            if (listing.columns[i].isNumber)
                cell = nlohmann::ordered_json::parse(row[i]);
            else
                cell = row[i];
        }
        all.push_back(object);
    }
    constexpr auto replace = nlohmann::ordered_json::error_handler_t::replace;
    return all.dump(2, ' ', false, replace) + '\n';
}

}  // namespace

std::string textOf(const Listing& listing, ListFormat format) {
    switch (format) {
        case ListFormat::Csv:
            return csvOf(listing);
        case ListFormat::Json:
            return jsonOf(listing);
        default:
            return tableOf(listing);
    }
}

}  // namespace cinder
