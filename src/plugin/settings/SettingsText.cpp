#include "plugin/settings/SettingsText.h"

#include <algorithm>

#include "plugin/settings/SettingValue.h"

namespace cinder {
namespace {

constexpr std::string_view blanks = " \t\r";
constexpr std::string_view structure = "=#";  // what a name may not hold in the open
constexpr std::string_view newFileRemark =
    "# One setting a line: NAME=TYPE:VALUE. TYPE is int, text or bytes; %XX in a text is the byte\n"
    "# with that hexadecimal number. Lines like this one are left alone.\n";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

}  // namespace

SettingsText::SettingsText(std::string_view content) {
    while (!content.empty()) {
        const std::size_t end = content.find('\n');
        lines.push_back(lineOf(content.substr(0, end)));
        content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
    }
}

SettingsText::Line SettingsText::lineOf(std::string_view whole) {
    Line line{std::string(whole), {}, {}};
    std::string_view text = whole;
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    text = trimmed(text);
    const std::size_t sign = text.find('=');
    if (sign == std::string_view::npos || text.starts_with('#')) return line;
    line.foldedName = foldCase(unescapeSetting(trimmed(text.substr(0, sign))));
    line.value = trimmed(text.substr(sign + 1));
    return line;
}

std::optional<std::string_view> SettingsText::find(std::string_view name) const {
    const std::string folded = foldCase(name);
    const auto found = std::find_if(lines.rbegin(), lines.rend(),
                                    [&](const Line& line) { return line.foldedName == folded; });
    if (found == lines.rend()) return {};
    return found->value;
}

void SettingsText::set(std::string_view name, std::string_view encoded) {
    if (lines.empty()) *this = SettingsText(newFileRemark);
    Line line = lineOf(escapeSetting(name, structure).append("=").append(encoded));
    const auto hasName = [name = line.foldedName](const Line& other) {
        return other.foldedName == name;
    };
    const auto last = std::find_if(lines.rbegin(), lines.rend(), hasName);
    if (last == lines.rend()) {
        lines.push_back(std::move(line));
        return;
    }
    const auto place = last.base() - 1;
    *place = std::move(line);
    // The earlier lines of this name never counted; now they would only mislead.
    lines.erase(std::remove_if(lines.begin(), place, hasName), place);
}

std::string SettingsText::content() const {
    std::string content;
    for (const Line& line : lines)
        content.append(line.whole).append("\n");
    return content;
}

}  // namespace cinder
