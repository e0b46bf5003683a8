#include "presets/archive/SetupArchive.h"

#include "presets/archive/ArchiveFixtures.h"
#include "presets/files/Paths.h"
#include "support/Hex.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

namespace cinder::test {

namespace {

namespace fs = std::filesystem;

bool extract(const std::string& bytes, const std::string& name, const fs::path& destination,
             bool overwrite = false) {
    return extractArchiveFolder(streamOf(bytes), name, systemPath(destination), overwrite);
}

TEST_CASE("SetupArchive: an archive that was put together by hand") {
    const std::string zeros60(120, '0');
    const std::string archive = fromHex(
        "4b532f4953422f33 [magic]  3a020000 [570 bytes behind offset 28]"
        "000000000000000000000000  02000000 [files]"
        "00000000000000000000000000000000000000000000000000"
        "[a file that is called like the folder wanted]"
        "04 54726565 [Tree]" +
        zeros60 +
        "000000 00000000 00000000"
        "[the folder] 04 54524545 [TREE]" +
        zeros60 +
        "000000 3d010000 [317] ffffffff"
        "[file] 01 61 [a]" +
        zeros60 +
        "000000000000 0d000000 [13 packed] 02000000 [2 unpacked]"
        "7801 01 0200 fdff 4869 [Hi] 00fb00b2 [adler]"
        "[folder] 01 62 [b]" +
        zeros60 +
        "000000000000 4c000000 ffffffff"
        "00" +
        zeros60 +
        "00000000000000 00000000 00000000"
        "00" +
        zeros60 +
        "00000000000000 00000000 00000000"
        "[end] 00" +
        zeros60 + "00000000000000 00000000 00000000");
    REQUIRE(archive.size() == 598);
    const TemporaryFolder folder;
    CHECK(extract(archive, "tree", folder / "to/here"));
    CHECK(treeOf(folder.path) ==
          Tree{{"to/", ""}, {"to/here/", ""}, {"to/here/a", "Hi"}, {"to/here/b/", ""}});

    CHECK_FALSE(extract(archive, "tre", folder / "other"));
    CHECK_FALSE(extract(archive.substr(1), "tree", folder / "other"));
    CHECK_FALSE(fs::exists(folder / "other"));
}

TEST_CASE("SetupArchive: overwriting is a choice, and what can't be unpacked fails alone") {
    const std::string archive = archiveOf(folderEntry(
        "f", fileEntry("kept", "new") + fileEntry("missing", "new") + fileEntry("empty", "") +
                 fileEntry("blocked", "new") + folderEntry("file", fileEntry("lost", "new")) +
                 fileEntry("last", "new") + fileEntry("last", "newer")));
    for (const bool overwrite : {false, true}) {
        const TemporaryFolder folder;
        putBytes(folder / "kept", "a longer old content");
        REQUIRE(::chmod((folder / "kept").c_str(), 0640) == 0);
        putBytes(folder / "file", "old");
        fs::create_directory(folder / "blocked");
        CHECK_FALSE(extract(archive, "F", folder.path, overwrite));
        CHECK(treeOf(folder.path) == Tree{{"kept", overwrite ? "new" : "a longer old content"},
                                          {"missing", "new"},
                                          {"empty", ""},
                                          {"blocked/", ""},
                                          {"file", "old"},
                                          {"last", overwrite ? "newer" : "new"}});
        struct stat status {};
        REQUIRE(::stat((folder / "kept").c_str(), &status) == 0);
        CHECK((status.st_mode & 07777) == 0640);
    }
}

TEST_CASE("SetupArchive: no link leads out of the destination") {
    const std::string archive =
        archiveOf(folderEntry("f", folderEntry("sub", fileEntry("a", "new")) +
                                       fileEntry("b", "new") + fileEntry("c", "new")));
    for (const bool overwrite : {false, true}) {
        const TemporaryFolder folder;
        fs::create_directories(folder / "outside");
        putBytes(folder / "outside/secret", "old");
        fs::create_directory(folder / "real");
        fs::create_symlink("../outside", folder / "real/sub");
        fs::create_symlink("../outside/secret", folder / "real/b");
        fs::create_symlink("../outside/new", folder / "real/c");
        fs::create_symlink("real", folder / "tree");  // the destination itself is the user's choice
        CHECK_FALSE(extract(archive, "f", folder / "tree", overwrite));
        CHECK(treeOf(folder / "outside") == Tree{{"secret", "old"}});
        const Tree replaced = {{"sub", "-> ../outside"}, {"b", "new"}, {"c", "new"}};
        const Tree kept = {
            {"sub", "-> ../outside"}, {"b", "-> ../outside/secret"}, {"c", "-> ../outside/new"}};
        CHECK(treeOf(folder / "real") == (overwrite ? replaced : kept));
    }
}

TEST_CASE("SetupArchive: a file that can't be written is reported, the old one stays") {
    const TemporaryFolder folder;
    putBytes(folder / "big", "old");
    const std::string text(5000, 't');
    const std::string archive =
        archiveOf(folderEntry("f", fileEntry("big", text) + fileEntry("small", "s")));
    {
        const FileSizeLimit fullDisk(1000);
        CHECK_FALSE(extract(archive, "f", folder.path, true));
    }
    CHECK(treeOf(folder.path) == Tree{{"big", "old"}, {"small", "s"}});
    CHECK(extract(archive, "f", folder.path, true));
    CHECK(treeOf(folder.path) == Tree{{"big", text}, {"small", "s"}});
}

}  // namespace

}  // namespace cinder::test
