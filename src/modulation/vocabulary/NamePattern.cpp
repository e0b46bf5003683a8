#include "modulation/vocabulary/NamePattern.h"

namespace cinder {

std::string numberedName(std::string_view pattern, int number) {
    std::string name(pattern);
    const std::size_t place = name.find('#');
    if (place != std::string::npos) name.replace(place, 1, std::to_string(number));
    return name;
}

}  // namespace cinder
