#include "cinder/plot/Text.h"

#include <cstdarg>
#include <cstdio>

namespace cinder {

std::string formatted(const char* format, ...) {
    char text[240] = "";
    std::va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof text, format, values);
    va_end(values);
    return text;
}

std::string withMinus(std::string number) {
    if (number.starts_with('-')) number.replace(0, 1, "\xe2\x88\x92");
    return number;
}

std::string hertzText(double hz) {
    return hz < 999.5 ? formatted("%.4g", hz) : formatted("%.4gk", hz * 1e-3);
}

std::string gainText(double db) {
    return withMinus(formatted(db > 0.0 ? "+%.3g dB" : "%.3g dB", db));
}

}  // namespace cinder
