#include "presets/archive/ArchiveFixtures.h"
#include "presets/archive/ArchiveReader.h"
#include "presets/archive/ArchiveWriter.h"
#include "presets/archive/Compression.h"
#include "presets/archive/SetupArchive.h"
#include "presets/files/Paths.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>

#include <vector>

namespace cinder::test {

namespace {

namespace fs = std::filesystem;

/// Unpacks into a folder of its own, beside which nothing may appear.
struct Attempt {
    explicit Attempt(const std::string& bytes) {
        const TemporaryFolder folder;
        SetupArchive setup(streamOf(bytes));
        setup.overwrite = true;
        result = setup.extractUnflushed("f", systemPath(folder / "in"));
        if (fs::exists(folder / "in")) tree = treeOf(folder / "in");
        CHECK(folder.names().size() <= 1);

        std::istringstream stream(bytes);
        std::vector<archive::ListedEntry> entries;
        isListed = archive::listArchive(stream, entries);
    }
    bool result = false;
    bool isListed = false;
    Tree tree;
};

TEST_CASE("Hostile archive: cut at any byte") {
    ArchiveWriter writer;
    writer.addFile("before/x", "not wanted");
    writer.addFile("f/one", "the first file");
    writer.addFile("f/sub/two", "the second file");
    writer.addFile("f/z", "");
    const std::string whole = writer.bytes();
    const Tree all = Attempt(whole).tree;
    REQUIRE(all.size() == 4);
    // Behind the folder wanted nobody looks; a folder whose end is cut off isn't entered.
    const std::size_t endOfFolder = whole.size() - 76;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        INFO("length " << length);
        const Attempt attempt(whole.substr(0, length));
        CHECK(attempt.result == (length >= endOfFolder));
        CHECK(attempt.tree == (length >= endOfFolder ? all : Tree{}));
        CHECK_FALSE(attempt.isListed);
    }
}

TEST_CASE("Hostile archive: a bit flipped in any byte leaves no file with another content") {
    const std::string one = "the first file, which is a little longer";
    const std::string whole = archiveOf(
        folderEntry("f", fileEntry("one", one) + folderEntry("s", fileEntry("two", "2"))));
    std::size_t unharmed = 0;
    for (std::size_t byte = 0; byte < whole.size(); ++byte) {
        std::string bytes = whole;
        bytes[byte] ^= static_cast<char>(1 << byte % 8);
        INFO("byte " << byte);
        const Attempt attempt(bytes);
        unharmed += attempt.result ? 1 : 0;
        for (const auto& [path, content] : attempt.tree)
            CHECK((content.empty() || content == one || content == "2"));
    }
    CHECK(unharmed > 0);  // what nobody reads, and names
}

TEST_CASE("Hostile archive: a bad name fails alone") {
    const std::string names[] = {"a/b",
                                 "../up",
                                 "a\\b",
                                 "c:",
                                 "..",
                                 ".",
                                 "/",
                                 std::string("a\0b", 3),
                                 "/outside",
                                 std::string(68, 'n'),
                                 std::string(255, 'n')};
    std::string entries;
    for (const std::string& name : names) {
        entries += fileEntry(name, "bad") + folderEntry(name, fileEntry("inner", "bad"));
        const Attempt attempt(archiveOf(folderEntry("f", entries + fileEntry("good", "1"))));
        CHECK_FALSE(attempt.result);
        CHECK(attempt.tree == Tree{{"good", "1"}});
        CHECK(attempt.isListed);
    }
    const std::string longest(67, 'n');
    CHECK(Attempt(archiveOf(folderEntry("f", fileEntry(longest, "1")))).tree ==
          Tree{{longest, "1"}});
}

TEST_CASE("Hostile archive: sizes that contradict each other stop it") {
    const std::string good = fileEntry("good", "1"), last = fileEntry("last", "1");
    const std::string content = archive::deflated("1");
    const auto length = static_cast<std::uint32_t>(content.size());
    // Past the folder's end but not the file's; past both; negative; a folder without an end.
    for (const std::string& broken :
         {entry("bad", content, 1, length + 600), entry("bad", content, 1, 0x7fffffff),
          entry("bad", content, 1, 0x80000000), entry("bad", content, 1, 0xffffffff),
          entry("bad", good, 0xffffffff), entry("bad", "", 0xffffffff),
          entry("bad", content, 0xffffffff, length + 600)}) {
        const Attempt attempt(
            archiveOf(folderEntry("f", good + broken + last) + std::string(400, 'x')));
        CHECK_FALSE(attempt.result);
        CHECK_FALSE(attempt.isListed);
        CHECK(attempt.tree.count("good") == 1);
        CHECK(attempt.tree.count("last") == 0);
    }
    // More room than the entries need is no contradiction.
    const Attempt roomy(archiveOf(
        folderEntry("f", folderEntry("s", good + entry("", "", 0) + std::string(9, 'x')) + last)));
    CHECK(roomy.result);
    CHECK(roomy.tree == Tree{{"s/", ""}, {"s/good", "1"}, {"last", "1"}});
}

TEST_CASE("Hostile archive: folders nest 64 deep and no deeper") {
    for (const int depth : {64, 65, 2000}) {
        std::string entries = fileEntry("x", "1");
        for (int i = 1; i < depth; ++i)
            entries = folderEntry("d", entries);
        const Attempt attempt(archiveOf(folderEntry("f", entries)));
        CHECK(attempt.result == (depth == 64));
        CHECK(attempt.isListed == (depth == 64));
        CHECK(attempt.tree.size() == (depth == 64 ? 64 : 63));
    }
}

TEST_CASE("Hostile archive: bombs and false sizes cost no memory and fail alone") {
    const std::string zeros(3u << 20, '\0');
    const std::string packed = archive::deflated(zeros);
    const std::string text = archive::deflated("text");
    std::string entries;
    for (const std::uint32_t size : {3u, 5u, 0x7fffffffu, 0xfffffffeu})
        entries += entry("bad", text, size);
    entries += entry("bomb", packed, 4) + entry("cut", packed.substr(0, 900), 3u << 20) +
               entry("none", "", 4) + entry("noise", "no zlib stream", 4);
    const Attempt attempt(archiveOf(folderEntry("f", entries + entry("good", text + "tail", 4))));
    CHECK_FALSE(attempt.result);
    CHECK(attempt.tree == Tree{{"good", "text"}});

    std::istringstream stream(packed);
    CHECK(archive::inflated(stream, static_cast<std::int64_t>(packed.size()), 3u << 20) == zeros);
}

}  // namespace

}  // namespace cinder::test
