#pragma once

#include <istream>
#include <streambuf>
#include <string_view>

namespace cinder {

/// Reads bytes in memory that somebody else keeps, without a copy.
class MemoryBuffer : public std::streambuf {
public:
    explicit MemoryBuffer(std::string_view bytes);

protected:
    pos_type seekoff(off_type offset, std::ios::seekdir from, std::ios::openmode which) override;
    pos_type seekpos(pos_type position, std::ios::openmode which) override;
};

/// An object in a base of its own, so that it is there before another base that is handed it.
template <typename T>
class OwnedFirst {
protected:
    template <typename... Arguments>
    explicit OwnedFirst(const Arguments&... arguments) : owned(arguments...) {}
    T owned;
};

class MemoryStream final : private OwnedFirst<MemoryBuffer>, public std::istream {
public:
    explicit MemoryStream(std::string_view bytes)
        : OwnedFirst<MemoryBuffer>(bytes), std::istream(&owned) {}
};

}  // namespace cinder
