#include "presets/PresetFolder.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "presets/PresetTree.h"
#include "presets/files/Paths.h"

namespace cinder::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

Names subfoldersOf(const PresetFolder& folder) {
    Names names;
    for (const auto& subfolder : folder.getSubfolders())
        names.push_back(subfolder->getName());
    return names;
}

Names presetsOf(const PresetFolder& folder) {
    Names names;
    for (const auto& preset : folder.getPresets())
        names.push_back(preset->name);
    return names;
}

}  // namespace

TEST_CASE(
    "PresetFolder: folders go by their numbers, then by name, then by the bytes of the path") {
    const PresetTree tree;
    tree.add({"_10 A/", "_2 B/", "C/", "_ X/", "_99999999999 Last/", "_0010\t b/", "_-5 Dash/",
              "_10000 D/", "_7/", "a/", "c/", "_3Close/", "plain_4/"});
    const PresetFolder folder(tree.root(), ".knp", 2500, noTime());
    CHECK(subfoldersOf(folder) ==
          Names{"-5 Dash", "X", "B", "Close", "", "A", "b", "a", "C", "c", "D", "plain_4", "Last"});
    CHECK(folder.getSubfolders().back()->getOrder() == 2147483647);
    CHECK(folder.getSubfolders()[5]->getOrder() == 10);
    CHECK(folder.getOrder() == 10000);
    CHECK(folder.getSubfolders()[1]->getPath() == tree.root() + "_ X\\");
    CHECK(folder.getSubfolders()[1]->getExtension() == ".knp");
}

TEST_CASE("PresetFolder: presets are the files with the extension, in any case, and none hidden") {
    const PresetTree tree;
    tree.add({"b.knp", "B.knp", "a.KNP", "preset.v2.knp", "x.txt", "x.knp.part", "noknp",
              ".b.knp.a1b2c3.part", ".hidden.knp", ".git/x.knp", "folder.knp/", "back\\slash.knp",
              "bad\xff.knp", "back/slash.knp"});
    const PresetFolder folder(tree.root(), ".knp", 2500, noTime());
    CHECK(presetsOf(folder) ==
          Names{"a", "B", "b", "back\xef\x81\x9cslash", "bad\xef\x83\xbf", "preset.v2"});
    for (const auto& preset : folder.getPresets()) {
        CAPTURE(preset->path);
        CHECK(fs::is_regular_file(nativePath(preset->path)));
        CHECK(preset->bank == -1);
        CHECK(preset->programLabel.empty());
    }
    CHECK(subfoldersOf(folder) == Names{"back", "folder.knp"});
    CHECK(folder.contains(tree.root() + "back\\slash.knp"));
    CHECK(folder.getSubfolders()[0]->contains(tree.root() + "back\\slash.knp"));
    CHECK_FALSE(folder.getSubfolders()[0]->contains(folder.getPresets()[3]->path));

    for (const std::string& nowhere : {std::string(), tree.root() + "x.txt", tree.root() + "no"}) {
        const PresetFolder none(nowhere, ".knp", 2500, noTime());
        CHECK(none.isEmpty());
        CHECK(none.contains(tree.root() + "b.knp") == false);
    }
}

TEST_CASE("PresetFolder: a scan that is too slow ends with its budget, with what it has") {
    const PresetTree tree;
    Names names{"one.knp", "two.knp"};
    constexpr std::size_t numFolders = 40, numEach = 5;
    for (std::size_t i = 0; i < numFolders * numEach; ++i)
        names.push_back(std::string("f") + std::to_string(i % numFolders) + "/in/" +
                        std::to_string(i) + ".knp");
    tree.add(names);
    std::size_t before = 0;
    for (const std::int32_t budget : {-1, 0, 1, 10, 50, 100, 200, 400, 2500}) {
        CAPTURE(budget);
        std::uint32_t clockMs = 0;
        const PresetFolder folder(tree.root(), ".knp", budget, SlowTimer::factory(clockMs, 1));
        std::size_t found = 0;
        bool isTimeUp = false;
        for (const auto& subfolder : folder.getSubfolders()) {
            CHECK_FALSE((isTimeUp && !subfolder->isEmpty()));
            isTimeUp = isTimeUp || subfolder->isEmpty();
            for (const auto& inner : subfolder->getSubfolders())
                found += inner->getPresets().size();
        }
        CHECK(found >= before);
        CHECK(folder.isCutShort() == (found < numFolders * numEach));
        before = found;
        CHECK(folder.getSubfolders().size() == (budget < 1 ? 0 : numFolders));
        if (budget >= 10) CHECK(folder.getPresets().size() == 2);
        // What goes on past the end is the listing of folders that stay empty.
        CHECK(static_cast<std::int32_t>(clockMs) <= std::max(budget, 0) + 2 + int{numFolders});
    }
    CHECK(before == numFolders * numEach);
    std::uint32_t clockMs = 0;
    const PresetFolder one(tree.root() + "f0\\in", ".knp", 3, SlowTimer::factory(clockMs, 1));
    CHECK(one.getPresets().size() == 2);
}

TEST_CASE("PresetFolder: links lead to presets, and neither circles nor fans of links run away") {
    const PresetTree tree;
    tree.add({"real/in/a.knp", "other/b.knp"});
    const fs::path root = tree.folder.path;
    fs::create_directory_symlink("..", root / "real/up");
    fs::create_directory_symlink(".", root / "self");
    fs::create_directory_symlink("real/in", root / "again");
    fs::create_directory_symlink("../real", root / "other/real");
    fs::create_directory_symlink("../../other", root / "real/in/other");
    {
        const PresetFolder folder(tree.root(), ".knp", 2500, noTime());
        CHECK(subfoldersOf(folder) == Names{"again", "other", "real"});
        CHECK(presetsOf(*folder.getSubfolders()[0]) == Names{"a"});
        CHECK(subfoldersOf(*folder.getSubfolders()[2]) == Names{"in"});
        CHECK(numFoldersIn(folder) < 20);
    }
    // Two links on each of 30 floors: 2^30 ways down.
    for (int floor = 0; floor < 30; ++floor)
        for (const char* const name : {"x", "y"}) {
            const fs::path at = root / "fan" / std::to_string(floor);
            fs::create_directories(at);
            fs::create_directory_symlink(std::string("../") + std::to_string(floor + 1), at / name);
        }
    fs::create_directories(root / "fan/30");
    std::uint32_t clockMs = 0;
    const PresetFolder fan(tree.root() + "fan\\0", ".knp", 300, SlowTimer::factory(clockMs, 1));
    CHECK(numFoldersIn(fan) > 50);
    CHECK(numFoldersIn(fan) < 400);
}

}  // namespace cinder::test
