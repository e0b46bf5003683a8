#include "core/Utf8.h"

namespace cinder {

std::size_t utf8Length(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    if (lead < 0x80) return 1;
    if (lead < 0xc2 || lead > 0xf4) return 0;
    const std::size_t length = lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
    if (text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xc0) != 0x80) return 0;
    const unsigned low = lead == 0xe0 ? 0xa0 : lead == 0xf0 ? 0x90 : 0x80;
    const unsigned high = lead == 0xed ? 0x9f : lead == 0xf4 ? 0x8f : 0xbf;
    return byte(1) < low || byte(1) > high ? 0 : length;
}

}  // namespace cinder
