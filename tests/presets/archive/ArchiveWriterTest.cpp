#include "presets/archive/ArchiveWriter.h"

#include "presets/archive/ArchiveFixtures.h"
#include "presets/archive/ArchiveReader.h"
#include "presets/archive/SetupArchive.h"
#include "presets/files/Paths.h"
#include "support/Rng.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

namespace cinder::test {

namespace {

TEST_CASE("ArchiveWriter: the layout, to the byte") {
    ArchiveWriter writer;
    writer.addFile("b/z", "");
    writer.addFolder("B");
    writer.addFile("b/a", "");
    const std::string closing(76, '\0');
    const auto header = [](const std::string& name, std::uint32_t size, std::uint32_t unpacked) {
        std::string bytes(1, static_cast<char>(name.size()));
        bytes += name;
        bytes.resize(68);
        return bytes + number(size) + number(unpacked);
    };
    CHECK(writer.bytes() == "KS/ISB/3" + number(557) + std::string(12, '\0') + number(2) +
                                std::string(25, '\0') + header("B", 76, 0xffffffff) + closing +
                                header("b", 228, 0xffffffff) + header("a", 0, 0) +
                                header("z", 0, 0) + closing + closing);
}

TEST_CASE("ArchiveWriter: a random tree comes back, and any order makes the same bytes") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    Tree tree = {{"t/", ""}};
    for (int i = 0; i < 40; ++i) {
        std::string path = "t/";
        for (int depth = rng.integer(0, 3); depth > 0; --depth) {
            path += "Folder " + std::to_string(rng.integer(0, 2)) + "/";
            tree[path];
        }
        std::string& content = tree[path + "File " + std::to_string(i) + ".knp"];
        for (int length = rng.integer(0, 3) * rng.integer(0, 20000); length > 0; --length)
            content += static_cast<char>(rng.integer(0, rng.integer(1, 255)));
    }
    std::string packed;
    std::vector<std::pair<std::string, std::string>> entries(tree.begin(), tree.end());
    for (int order = 0; order < 2; ++order) {
        ArchiveWriter writer;
        for (const auto& [path, content] : entries)
            path.ends_with('/') ? writer.addFolder(path.substr(0, path.size() - 1))
                                : writer.addFile(path, content);
        CHECK((order == 0 || writer.bytes() == packed));
        packed = writer.bytes();
        std::ranges::reverse(entries);
    }
    const TemporaryFolder folder;
    CHECK(extractArchiveFolder(streamOf(packed), "t", systemPath(folder / "t"), false));
    CHECK(treeOf(folder.path) == tree);

    std::istringstream stream(packed);
    std::vector<archive::ListedEntry> listed;
    CHECK(archive::listArchive(stream, listed));
    Tree sizes;
    for (const auto& [path, entry] : listed)
        sizes[path + (entry.isFolder ? "/" : "")] =
            entry.isFolder ? "" : std::to_string(entry.unpackedSize);
    for (auto& [path, content] : tree)
        if (!path.ends_with('/')) content = std::to_string(content.size());
    CHECK(sizes == tree);
}

TEST_CASE("ArchiveWriter: what no reader would take is refused") {
    ArchiveWriter writer;
    writer.addFile("folder/file", "1");
    std::string deep = "0";
    for (int i = 1; i < 64; ++i)
        deep += "/0";
    writer.addFolder(deep);
    for (const std::string& path :
         {std::string(""), std::string("a//b"), std::string("/a"), std::string("folder/"),
          std::string("a:b"), std::string("a\\b"), std::string("a\0b", 3), std::string("folder/.."),
          std::string("folder/."), std::string(68, 'n'), std::string("folder/file"),
          std::string("folder"), std::string("folder/file/inner"), deep + "/0/file"}) {
        INFO(path);
        CHECK_THROWS_AS(writer.addFile(path, "2"), std::invalid_argument);
    }
}

}  // namespace

}  // namespace cinder::test
