#include "state/MemoryStream.h"

namespace cinder {

MemoryBuffer::MemoryBuffer(std::string_view bytes) {
    // The base wants pointers it could write through; this class never does.
    char* const first = const_cast<char*>(bytes.data());
    setg(first, first, first + bytes.size());
}

MemoryBuffer::pos_type MemoryBuffer::seekoff(off_type offset, std::ios::seekdir from,
                                             std::ios::openmode which) {
    if (!(which & std::ios::in)) return pos_type(off_type(-1));
    off_type base = 0;
    if (from == std::ios::cur) base = gptr() - eback();
    if (from == std::ios::end) base = egptr() - eback();
    if (offset < -base || offset > (egptr() - eback()) - base) return pos_type(off_type(-1));
    setg(eback(), eback() + base + offset, egptr());
    return base + offset;
}

MemoryBuffer::pos_type MemoryBuffer::seekpos(pos_type position, std::ios::openmode which) {
    return seekoff(off_type(position), std::ios::beg, which);
}

}  // namespace cinder
