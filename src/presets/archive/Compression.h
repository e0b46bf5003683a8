#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace cinder::archive {

/// Inflates the next `size` bytes of the stream. The result grows with what really comes out, so
/// that a size that lies costs nothing.
/// Errors  none: anything but a zlib stream of exactly `unpackedSize` bytes in front, or more than
///         a file of an archive may have
std::optional<std::string> inflated(std::istream& stream, std::int64_t size,
                                    std::uint32_t unpackedSize);

/// One zlib stream; the same for the same bytes.
std::string deflated(std::string_view bytes);

}  // namespace cinder::archive
