#pragma once

#include "cinder/audio/UserError.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace cinder {

/// All that a file or a pipe holds, up to 64 MiB.
/// Errors  UserError: what cannot be read, and what is longer
std::string readWhole(const std::filesystem::path& file);

struct TextLine {
    int number;  // from 1
    std::string_view text;
};

/// The lines that say something: without blanks around them, empty ones, and those that begin with
/// a #. Behind a value it is no comment: C#4 is a note.
std::vector<TextLine> linesOf(std::string_view text);

std::string_view withoutBlanks(std::string_view text);

/// "FILE, line 3: what is wrong".
UserError errorInLine(const std::filesystem::path& file, int line, const std::string& what);

}  // namespace cinder
