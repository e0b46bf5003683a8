#include "presets/format/TextLines.h"

#include <algorithm>

namespace cinder {

namespace {

constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

bool isBlankInLine(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

}  // namespace

std::vector<TextLine> linesOf(std::string_view text) {
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    std::vector<TextLine> lines;
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = withoutBlanks(text.substr(0, end));
        if (!line.empty() && line.front() != '#') lines.push_back({number, line});
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && isBlankInLine(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlankInLine(text.back()))
        text.remove_suffix(1);
    return text;
}

}  // namespace cinder
