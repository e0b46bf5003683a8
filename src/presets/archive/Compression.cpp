#include "presets/archive/Compression.h"

#include "presets/archive/ArchiveFormat.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <istream>
#include <new>

namespace cinder::archive {

namespace {

constexpr std::size_t pieceBytes = 16384;

class Inflater {
public:
    Inflater() {
        if (inflateInit(&state) != Z_OK) throw std::bad_alloc();
    }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;
    ~Inflater() { inflateEnd(&state); }

    /// Appends what a piece of the stream holds, and stops when `out` is longer than `limit`.
    /// False: it is broken.
    bool add(std::string_view piece, std::string& out, std::size_t limit) {
        // zlib's interface has no const; it only reads from here.
        state.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(piece.data()));
        state.avail_in = static_cast<uInt>(piece.size());
        std::array<char, pieceBytes> room;
        do {
            state.next_out = reinterpret_cast<Bytef*>(room.data());
            state.avail_out = static_cast<uInt>(room.size());
            const int status = inflate(&state, Z_NO_FLUSH);
            out.append(room.data(), room.size() - state.avail_out);
            hasEnded = status == Z_STREAM_END;
            if (hasEnded) return true;
            if (status != Z_OK && status != Z_BUF_ERROR) return false;
            // A full room may mean that there is more; only a room with space left is an end.
        } while (state.avail_out == 0 && out.size() <= limit);
        return true;
    }

    bool hasEnded = false;

private:
    z_stream state{};
};

}  // namespace

std::optional<std::string> inflated(std::istream& stream, std::int64_t size,
                                    std::uint32_t unpackedSize) {
    if (unpackedSize > maxFileBytes) return {};
    Inflater inflater;
    std::string out;
    std::array<char, pieceBytes> piece;
    while (size > 0 && !inflater.hasEnded && out.size() <= unpackedSize) {
        const auto wanted = std::min<std::int64_t>(size, pieceBytes);
        if (!stream.read(piece.data(), wanted)) return {};
        size -= wanted;
        if (!inflater.add({piece.data(), static_cast<std::size_t>(wanted)}, out, unpackedSize))
            return {};
    }
    if (!inflater.hasEnded || out.size() != unpackedSize) return {};
    return out;
}

std::string deflated(std::string_view bytes) {
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    std::string out(size, '\0');
    if (compress2(reinterpret_cast<Bytef*>(out.data()), &size,
                  reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uLong>(bytes.size()),
                  Z_BEST_COMPRESSION) != Z_OK)
        throw std::bad_alloc();  // its only error here: the room is large enough
    out.resize(size);
    return out;
}

}  // namespace cinder::archive
