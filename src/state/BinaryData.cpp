#include "state/BinaryData.h"

#include <algorithm>
#include <array>
#include <bit>
#include <istream>
#include <limits>
#include <ostream>

namespace cinder {

namespace {

constexpr std::size_t magicLength = 4;

std::uint32_t littleEndian(std::uint32_t word) {
    if constexpr (std::endian::native == std::endian::little) return word;
    return (word >> 24) | ((word >> 8) & 0xff00u) | ((word << 8) & 0xff0000u) | (word << 24);
}

/// Reads `count` whole words and turns those that are missing, a torn one included, into 0.
template <typename T>
void readWords(std::istream& stream, T* words, std::size_t count) {
    static_assert(sizeof(T) == sizeof(std::uint32_t));
    stream.read(reinterpret_cast<char*>(words), static_cast<std::streamsize>(count * sizeof(T)));
    const std::size_t whole = static_cast<std::size_t>(stream.gcount()) / sizeof(T);
    for (std::size_t i = 0; i < whole; ++i)
        words[i] = std::bit_cast<T>(littleEndian(std::bit_cast<std::uint32_t>(words[i])));
    std::fill(words + whole, words + count, T{});
}

/// Whether fewer bytes than `wanted` are left, as far as the stream can tell.
bool endsBefore(std::istream& stream, std::streamoff wanted) {
    std::streambuf& buffer = *stream.rdbuf();
    const std::streamoff here = buffer.pubseekoff(0, std::ios::cur, std::ios::in);
    if (here < 0) return false;
    const std::streamoff end = buffer.pubseekoff(0, std::ios::end, std::ios::in);
    buffer.pubseekpos(here, std::ios::in);
    return end >= 0 && end - here < wanted;
}

template <typename T>
void writeWord(std::ostream& stream, T value) {
    const std::uint32_t word = littleEndian(std::bit_cast<std::uint32_t>(value));
    stream.write(reinterpret_cast<const char*>(&word), sizeof word);
}

}  // namespace

void readValue(std::istream& stream, std::int32_t& value) {
    readWords(stream, &value, 1);
}

void readValue(std::istream& stream, std::uint32_t& value) {
    readWords(stream, &value, 1);
}

void readValue(std::istream& stream, float& value) {
    readWords(stream, &value, 1);
}

void readValues(std::istream& stream, float* values, std::size_t count) {
    readWords(stream, values, count);
}

void writeValue(std::ostream& stream, std::int32_t value) {
    writeWord(stream, value);
}

void writeValue(std::ostream& stream, std::uint32_t value) {
    writeWord(stream, value);
}

void writeValue(std::ostream& stream, float value) {
    writeWord(stream, value);
}

void writeValues(std::ostream& stream, const float* values, std::size_t count) {
    if constexpr (std::endian::native == std::endian::little)
        stream.write(reinterpret_cast<const char*>(values),
                     static_cast<std::streamsize>(count * sizeof *values));
    else
        std::for_each(values, values + count, [&](float value) { writeWord(stream, value); });
}

bool isGood(const std::ios& stream) {
    return !stream.fail();
}

std::string BinaryDataReader::readHeader() {
    std::array<char, magicLength> characters{};
    stream.read(characters.data(), characters.size());
    std::int32_t newVersion = 0;
    readValue(stream, newVersion);
    if (!isGood()) return {};
    version = newVersion;
    std::string magic(characters.begin(), characters.end());
    magic.resize(magic.find_last_not_of('\0') + 1);
    return magic;
}

std::string BinaryDataReader::readString() {
    std::int32_t count = 0;
    readValue(stream, count);
    if (count < 1) return {};
    if (endsBefore(stream, count)) {
        stream.setstate(std::ios::failbit | std::ios::eofbit);
        return {};
    }
    // Piece by piece, for a stream that could not tell: the count may be a lie, and memory is only
    // taken for what really comes.
    constexpr std::size_t pieceLength = 4096;
    std::string text;
    for (auto left = static_cast<std::size_t>(count); left > 0 && isGood();) {
        const std::size_t piece = std::min(left, pieceLength);
        text.resize(text.size() + piece);
        stream.read(text.data() + text.size() - piece, static_cast<std::streamsize>(piece));
        left -= piece;
    }
    return isGood() ? text : std::string();
}

bool BinaryDataReader::isGood() const {
    return cinder::isGood(stream);
}

void BinaryDataWriter::writeHeader(std::string_view magic, std::int32_t version) {
    std::array<char, magicLength> characters{};
    std::copy_n(magic.begin(), std::min(magic.size(), characters.size()), characters.begin());
    stream.write(characters.data(), characters.size());
    writeValue(stream, version);
}

void BinaryDataWriter::writeString(std::string_view text) {
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        stream.setstate(std::ios::failbit);
        return;
    }
    writeValue(stream, static_cast<std::int32_t>(text.size()));
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
}

bool BinaryDataWriter::isGood() const {
    return cinder::isGood(stream);
}

}  // namespace cinder
