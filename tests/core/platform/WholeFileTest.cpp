#include "core/platform/WholeFile.h"

#include <doctest/doctest.h>
#include <sys/stat.h>

#include <string>

#include "support/TemporaryFolder.h"

namespace cinder::test {
namespace {

namespace fs = std::filesystem;
using platform::readWholeFile, platform::writeWholeFile;
using Names = std::vector<std::string>;

TEST_CASE("WholeFile: what is written is read, through links and with the rights of before") {
    const TemporaryFolder folder;
    const std::string content("a\0b\r\n", 5);
    const std::string longName(255, 'x');  // the unfinished file's name must fit, too
    fs::create_symlink(longName, folder / "link");
    const mode_t before = ::umask(027);
    for (const mode_t mode : {0640, 0600, 0664}) {
        if (mode != 0640) REQUIRE(::chmod((folder / longName).c_str(), mode) == 0);
        CHECK(writeWholeFile(folder / "link", content));
        CHECK(readWholeFile(folder / "link", content.size()) == content);
        struct stat status {};
        REQUIRE(::stat((folder / longName).c_str(), &status) == 0);
        CHECK((status.st_mode & 07777) == mode);
    }
    ::umask(before);
    CHECK(folder.names() == Names{"link", longName});
    CHECK(!readWholeFile(folder / longName, content.size() - 1));

    std::string big;
    for (int i = 0; big.size() < 200000; ++i)
        big += std::to_string(i);
    CHECK(writeWholeFile(folder / longName, big));
    CHECK(readWholeFile(folder / longName) == big);
}

TEST_CASE("WholeFile: what is no file to replace stays as it is") {
    const TemporaryFolder folder;
    fs::create_directory(folder / "folder");
    fs::create_symlink("circle", folder / "circle");
    REQUIRE(::mkfifo((folder / "pipe").c_str(), 0600) == 0);
    const Names before = folder.names();
    for (const char* name : {"folder", "circle", "pipe", "missing/file", "folder/", "pipe/file"}) {
        INFO(name);
        CHECK(!writeWholeFile(folder / name, "new"));
        CHECK(!readWholeFile(folder / name));
    }
    CHECK(folder.names() == before);
}

TEST_CASE("WholeFile: a disk that is full at any byte leaves the old content") {
    const TemporaryFolder folder;
    putBytes(folder / "file", "old");
    for (const rlim_t room : {0, 1, 50, 99, 100}) {
        const FileSizeLimit limit(room);
        CHECK(writeWholeFile(folder / "file", std::string(100, 'n')) == (room == 100));
        CHECK(bytesOf(folder / "file") == (room == 100 ? std::string(100, 'n') : "old"));
    }
    CHECK(folder.names() == Names{"file"});
}

}  // namespace
}  // namespace cinder::test
