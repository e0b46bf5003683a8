#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace cinder {

/// Fixed-width values on a stream: 4 bytes each, little-endian on every machine, two's complement
/// and IEEE 754, without alignment or padding.
/// Errors  a short read leaves 0 and a failed stream. One look at `isGood` behind the last value
///         is enough
void readValue(std::istream& stream, std::int32_t& value);
void readValue(std::istream& stream, std::uint32_t& value);
void readValue(std::istream& stream, float& value);
/// Reads `count` values in one go; those that the stream does not hold become 0.
void readValues(std::istream& stream, float* values, std::size_t count);

void writeValue(std::ostream& stream, std::int32_t value);
void writeValue(std::ostream& stream, std::uint32_t value);
void writeValue(std::ostream& stream, float value);
void writeValues(std::ostream& stream, const float* values, std::size_t count);

/// Neither failed nor bad. A stream that has just been read to its end is good.
bool isGood(const std::ios& stream);

/// Reads what a BinaryDataWriter wrote: headers and strings, and fixed-width values directly on the
/// stream.
/// Shape   header: 4 characters, then the version; string: a count, then as many bytes of UTF-8
/// State   the stream, not owned, and the version of the last header
/// Errors  an empty answer and a failed stream; a count costs no more memory than the stream holds
class BinaryDataReader {
public:
    explicit BinaryDataReader(std::istream& stream) : stream(stream) {}
    virtual ~BinaryDataReader() = default;
    BinaryDataReader(const BinaryDataReader&) = delete;
    BinaryDataReader& operator=(const BinaryDataReader&) = delete;

    /// Answers with the magic, without the zeros that pad a short one. If the stream fails, the
    /// answer is empty and the version stays.
    std::string readHeader();
    std::string readString();

    std::istream& getStream() const { return stream; }
    bool isGood() const;
    /// -1 until a header was read.
    std::int32_t getVersion() const { return version; }

private:
    std::istream& stream;
    std::int32_t version = -1;
};

/// Writes headers and strings; fixed-width values go directly on the stream.
/// State   the stream, not owned
/// Errors  the stream fails
class BinaryDataWriter {
public:
    explicit BinaryDataWriter(std::ostream& stream) : stream(stream) {}
    virtual ~BinaryDataWriter() = default;
    BinaryDataWriter(const BinaryDataWriter&) = delete;
    BinaryDataWriter& operator=(const BinaryDataWriter&) = delete;

    /// A magic of fewer than 4 characters is padded with zeros, a longer one cut.
    void writeHeader(std::string_view magic, std::int32_t version);
    void writeString(std::string_view text);

    std::ostream& getStream() const { return stream; }
    bool isGood() const;

private:
    std::ostream& stream;
};

}  // namespace cinder
