#pragma once

#include <string_view>
#include <vector>

namespace cinder {

struct TextLine {
    int number;  // from 1
    std::string_view text;
};

/// The lines that say something: without blanks around them, empty ones, and those that begin with
/// a #. Behind a value it is no comment: C#4 is a note.
std::vector<TextLine> linesOf(std::string_view text);

std::string_view withoutBlanks(std::string_view text);

}  // namespace cinder
