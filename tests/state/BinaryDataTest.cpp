#include "state/BinaryData.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>

#include "support/Rng.h"

namespace cinder {
namespace {

using namespace std::string_literals;

/// One of everything, with the bytes that must come out of it on any machine.
std::string writeSample() {
    std::ostringstream stream;
    BinaryDataWriter writer(stream);
    writer.writeHeader("KN", -2);
    writer.writeString("\xc3\xa4\0b"s);
    writer.writeString("");
    writeValue(stream, std::int32_t{0x01020304});
    writeValue(stream, std::uint32_t{0xfffefdfcu});
    writeValue(stream, -2.0f);
    const std::array<float, 2> pair{1.0f, 0.5f};
    writeValues(stream, pair.data(), pair.size());
    CHECK(writer.isGood());
    return stream.str();
}

const std::string sampleBytes =
    "KN\0\0\xfe\xff\xff\xff"s
    "\x04\0\0\0\xc3\xa4\0b"s
    "\0\0\0\0"s
    "\x04\x03\x02\x01"s
    "\xfc\xfd\xfe\xff"s
    "\0\0\0\xc0"s
    "\0\0\x80\x3f\0\0\0\x3f"s;

struct Sample {
    std::string magic, text, empty;
    std::int32_t version = 0, word = 7;
    std::uint32_t unsignedWord = 7;
    float number = 7.0f;
    std::array<float, 2> pair{7.0f, 7.0f};
    bool good = false;
};

Sample readSample(const std::string& bytes) {
    std::istringstream stream(bytes);
    BinaryDataReader reader(stream);
    Sample read;
    read.magic = reader.readHeader();
    read.version = reader.getVersion();
    read.text = reader.readString();
    read.empty = reader.readString();
    readValue(stream, read.word);
    readValue(stream, read.unsignedWord);
    readValue(stream, read.number);
    readValues(stream, read.pair.data(), read.pair.size());
    read.good = reader.isGood();
    return read;
}

TEST_CASE("BinaryData: bytes are fixed; a truncation fails the stream and leaves 0 for the rest") {
    CHECK(writeSample() == sampleBytes);
    for (std::size_t length = 0; length <= sampleBytes.size(); ++length) {
        INFO("length " << length);
        const Sample read = readSample(sampleBytes.substr(0, length));
        CHECK(read.good == (length == 40));
        CHECK(read.magic == (length < 8 ? "" : "KN"));
        CHECK(read.version == (length < 8 ? -1 : -2));
        CHECK(read.text == (length < 16 ? ""s : "\xc3\xa4\0b"s));
        CHECK(read.empty.empty());
        CHECK(read.word == (length < 24 ? 0 : 0x01020304));
        CHECK(read.unsignedWord == (length < 28 ? 0u : 0xfffefdfcu));
        CHECK(read.number == (length < 32 ? 0.0f : -2.0f));
        CHECK(read.pair == std::array{length < 36 ? 0.0f : 1.0f, length < 40 ? 0.0f : 0.5f});
    }
}

TEST_CASE("BinaryData: every bit pattern of a float survives, NaN payloads included") {
    test::Rng rng = test::Rng::fromEnvironment();
    for (int i = 0; i < 1000; ++i) {
        const auto bits = static_cast<std::uint32_t>(rng.next());
        INFO("bits " << bits << ", seed " << rng.seed());
        std::stringstream stream;
        writeValue(stream, std::bit_cast<float>(bits));
        std::uint32_t word = 0;
        readValue(stream, word);
        CHECK(word == bits);
        CHECK(isGood(stream));
    }
}

TEST_CASE("BinaryDataWriter: a magic is cut or padded to 4 characters") {
    for (const auto& [given, stored] : {std::pair{"A"s, "A\0\0\0"s}, {"KNBSX"s, "KNBS"s}}) {
        std::ostringstream stream;
        BinaryDataWriter(stream).writeHeader(given, 1);
        CHECK(stream.str() == stored + "\x01\0\0\0"s);
    }
}

/// Notes the longest piece that was asked for at once: memory has been taken for as much.
class SpyBuffer final : public std::stringbuf {
public:
    SpyBuffer(const std::string& bytes, bool tellsPlace)
        : std::stringbuf(bytes), tellsPlace(tellsPlace) {}
    const bool tellsPlace;
    std::streamsize longest = 0;

protected:
    pos_type seekoff(off_type offset, std::ios::seekdir from, std::ios::openmode which) override {
        return tellsPlace ? std::stringbuf::seekoff(offset, from, which) : pos_type(off_type(-1));
    }
    std::streamsize xsgetn(char* to, std::streamsize count) override {
        longest = std::max(longest, count);
        return std::stringbuf::xsgetn(to, count);
    }
};

TEST_CASE("BinaryDataReader: a string's count below 1 takes nothing, an absurd one no memory") {
    struct Case {
        std::int32_t count;
        std::size_t following;
        std::size_t length;
        bool good;
    };
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    for (const Case& c :
         {Case{-1, 9, 0, true}, Case{-most - 1, 9, 0, true}, Case{9000, 9000, 9000, true},
          Case{10, 9, 0, false}, Case{most, 10000, 0, false}})
        for (const bool tellsPlace : {true, false}) {
            INFO("count " << c.count << ", bytes behind it " << c.following << tellsPlace);
            std::ostringstream bytes;
            writeValue(bytes, c.count);
            bytes << std::string(c.following, 'x');
            SpyBuffer buffer(bytes.str(), tellsPlace);
            std::istream stream(&buffer);
            BinaryDataReader reader(stream);
            CHECK(reader.readString() == std::string(c.length, 'x'));
            CHECK(reader.isGood() == c.good);
            CHECK(buffer.longest <= (c.good || !tellsPlace ? 4096 : 4));
        }
}

TEST_CASE("BinaryDataReader: a second header that fails leaves the version of the first") {
    std::stringstream stream;
    BinaryDataWriter(stream).writeHeader("KNBS", 3);
    stream << "KNE";
    BinaryDataReader reader(stream);
    CHECK(reader.readHeader() == "KNBS");
    CHECK(reader.readHeader().empty());
    CHECK(reader.getVersion() == 3);
}

}  // namespace
}  // namespace cinder
