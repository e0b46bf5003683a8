#include "params/ShortenName.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "params/NumberText.h"

namespace cinder {

namespace {

struct Abbreviation {
    std::string_view whole, brief;
};

constexpr Abbreviation levels[] = {{"High ", "Hi"}, {"Low ", "Lo"}};
constexpr Abbreviation shapes[] = {
    {"HiPass", "HP"},  {"HiShelf", "HS"}, {"HiCut", "HC"},    {"LoPass", "LP"},
    {"LoShelf", "LS"}, {"LoCut", "LC"},   {"BandPass", "BP"},
};
constexpr Abbreviation terms[] = {
    {"Frequency", "Freq"}, {"Threshold", "Thresh"}, {"Release", "Rel"},
    {"Attack", "Att"},     {"Crossover", "Cross"},
};
// One after the other, each in all its lines, until the name is short enough.
constexpr std::span<const Abbreviation> abbreviations[] = {levels, shapes, terms};

constexpr std::string_view expendable = "eyuioa()-";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isUpperCase(char c) {
    return c >= 'A' && c <= 'Z';
}
/// A byte within a character of UTF-8, not its first.
bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

void replaceAll(std::string& text, const Abbreviation& abbreviation) {
    for (std::size_t at = 0; (at = text.find(abbreviation.whole, at)) != std::string::npos;
         at += abbreviation.brief.size())
        text.replace(at, abbreviation.whole.size(), abbreviation.brief);
}

/// "Band" to "B", "LFO2" to "LFO2".
std::string_view initialsOf(std::string_view word) {
    std::size_t length = 1;
    while (length < word.size() &&
           (isDigit(word[length]) || isUpperCase(word[length]) || isContinuation(word[length])))
        ++length;
    return word.substr(0, length);
}

struct SplitName {
    std::string initials;  // of all words but the last
    std::string last;
};

SplitName split(std::string_view name) {
    SplitName result;
    for (skipBlanks(name); !name.empty(); skipBlanks(name)) {
        const std::string_view word = name.substr(0, lengthOfWord(name));
        result.initials += initialsOf(result.last);
        result.last = word;
        name.remove_prefix(word.size());
    }
    return result;
}

/// "B2" to "2": the digit tells more than the letter in front of it.
void dropLetterBeforeDigit(SplitName& name) {
    const std::string whole = name.initials + name.last;
    if (whole.size() <= 2 || isDigit(whole[0]) || !isDigit(whole[1])) return;
    std::string& front = name.initials.empty() ? name.last : name.initials;
    front.erase(0, 1);
}

}  // namespace

std::string_view cutText(std::string_view text, int maxBytes) {
    auto length = static_cast<std::size_t>(std::max(maxBytes, 0));
    if (length >= text.size()) return text;
    while (length > 0 && isContinuation(text[length]))
        --length;
    return text.substr(0, length);
}

std::string shortenName(std::string_view name, int maxChars) {
    std::string text(name);
    if (maxChars <= 0) return text;
    const auto limit = static_cast<std::size_t>(maxChars);
    for (const std::span<const Abbreviation> step : abbreviations) {
        if (text.size() <= limit) return text;
        for (const Abbreviation& abbreviation : step)
            replaceAll(text, abbreviation);
    }
    if (text.size() <= limit) return text;
    SplitName parts = split(text);
    if (parts.initials.size() + parts.last.size() > limit) dropLetterBeforeDigit(parts);
    text = parts.initials + parts.last;
    if (text.size() <= limit) return text;
    text = parts.initials;
    for (char c : parts.last)
        if (expendable.find(c) == std::string_view::npos) text += c;
    return std::string(cutText(text, maxChars));
}

}  // namespace cinder
