#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cinder {

/// The whole of `text` as a number that is finite, with a point as decimal sign wherever it runs.
std::optional<double> parseNumber(std::string_view text);

/// The whole of `text` as a whole number in `minimum`..`maximum`, else a UsageError that names the
/// option and its range.
int parseWhole(std::string_view option, std::string_view text, int minimum, int maximum);

/// The whole of `text` as a number in `minimum`..`maximum`, else a UsageError as above.
double parseWithin(std::string_view option, std::string_view text, double minimum, double maximum);

/// The shortest text that reads back as the same number.
std::string numberText(float value);

/// Equal but for upper and lower case, and for dashes in the place of blanks.
bool isSameName(std::string_view a, std::string_view b);

}  // namespace cinder
