#pragma once

#include <string>

namespace cinder {

/// As printf.
[[gnu::format(printf, 1, 2)]] std::string formatted(const char* format, ...);

/// Minus and plus of one width: a hyphen is easily missed. "−12", "0.5".
std::string withMinus(std::string number);
/// "20", "1.5k".
std::string hertzText(double hz);
/// "+6 dB", "−1.5 dB", "0 dB".
std::string gainText(double db);

}  // namespace cinder
