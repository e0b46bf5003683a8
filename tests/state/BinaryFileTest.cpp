#include "state/BinaryFile.h"

#include <doctest/doctest.h>

#include <string>

#include "support/TemporaryFolder.h"

namespace cinder::test {
namespace {

namespace fs = std::filesystem;

TEST_CASE("BinaryFileWriter: a commit replaces the start of a file, and nothing else does") {
    const TemporaryFolder folder;
    const fs::path path = folder / "file";
    for (const char* before : {"", "12", "1234567890123456"}) {
        const std::string content = before;
        content.empty() ? fs::remove(path), void() : putBytes(path, content);
        const std::string tail = content.size() > 8 ? content.substr(8) : std::string();
        {
            BinaryFileWriter writer(path);
            writer.writeHeader("ABCD", 1);
            CHECK(bytesOf(path) == content);
            const FileSizeLimit full(8 + tail.size() - 1);
            CHECK(!writer.commit());
            CHECK(bytesOf(path) == content);
        }
        {
            BinaryFileWriter abandoned(path);
            abandoned.writeHeader("ABCD", 1);
        }
        CHECK(bytesOf(path) == content);
        BinaryFileWriter writer(path);
        writer.writeHeader("ABCD", 1);
        CHECK(writer.commit());
        CHECK(bytesOf(path) == std::string("ABCD\1\0\0\0", 8) + tail);
        BinaryFileReader reader(path);
        CHECK(reader.readHeader() == "ABCD");
    }
    CHECK(folder.names() == std::vector<std::string>{"file"});
}

TEST_CASE("BinaryFileWriter: what the file holds can be looked at and kept in part") {
    const TemporaryFolder folder;
    putBytes(folder / "file", std::string("ABCD\1\0\0\0wordmore", 16));
    BinaryFileWriter writer(folder / "file");
    CHECK(BinaryDataReader(writer.getStream()).readHeader() == "ABCD");
    writer.getStream().seekp(12) << "new";
    CHECK(writer.commit());
    CHECK(bytesOf(folder / "file") == std::string("ABCD\1\0\0\0wordnewe", 16));
}

TEST_CASE("BinaryFile: what is no regular file fails and stays") {
    const TemporaryFolder folder;
    BinaryFileReader missing(folder / "missing"), directory(folder.path);
    CHECK(!missing.isGood());
    CHECK(directory.readHeader().empty());
    BinaryFileWriter writer(folder.path);
    CHECK(!writer.commit());
    BinaryFileWriter nowhere(folder / "missing/file");
    CHECK(!nowhere.commit());
    CHECK(folder.names().empty());
}

TEST_CASE("MemoryStream: positions are those of any stream, and none lies outside") {
    const std::string bytes = "0123456789";
    BinaryResourceReader reader(bytes);
    std::istream& stream = reader.getStream();
    struct Seek {
        int offset;
        std::ios::seekdir from;
        int position;
    };
    for (const Seek& seek : {Seek{4, std::ios::beg, 4},
                             {-5, std::ios::cur, 0},
                             {-1, std::ios::end, 9},
                             {0, std::ios::end, 10},
                             {1, std::ios::end, -1},
                             {-11, std::ios::end, -1}}) {
        stream.clear();
        stream.seekg(seek.offset, seek.from);
        CHECK(stream.tellg() == std::streamoff(seek.position));
        if (seek.position >= 0 && seek.position < 10) CHECK(stream.get() == '0' + seek.position);
    }
}

}  // namespace
}  // namespace cinder::test
