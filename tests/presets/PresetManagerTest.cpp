#include "presets/PresetManager.h"

#include <doctest/doctest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "presets/PresetTree.h"

namespace cinder::test {
namespace {

using Names = std::vector<std::string>;

}  // namespace

TEST_CASE("PresetManager: folders before what lies beside them, the root last") {
    const PresetTree tree;
    tree.add({"Root.knp", "B/In B.knp", "B/Z/Deep.knp", "_5 C/In C.knp", "B/A/Same.knp",
              "_5 C/Same.knp", "Default Setting.knp", "B/Default Setting.knp"});
    PresetManager manager(tree.root(), ".knp", noTime());
    CHECK(namesOf(manager) == Names{"In C", "Same", "Same", "Deep", "Default Setting", "In B",
                                    "Default Setting", "Root"});
    CHECK(manager.findByName("Same")->path == tree.root() + "_5 C\\Same.knp");
    CHECK(manager.findByName("same") == nullptr);
    CHECK(manager.findByName("Default Setting")->path == tree.root() + "B\\Default Setting.knp");
    CHECK(manager.findAtRootFirst("Default Setting")->path == tree.root() + "Default Setting.knp");
    CHECK(manager.findAtRootFirst("Deep") == manager.findByName("Deep"));
    CHECK(manager.findAtRootFirst("None") == nullptr);
    CHECK(manager.findByName("In B")->bank == -1);

    // The list is what the last scan saw, whatever has become of the files.
    std::filesystem::remove_all(tree.folder / "B");
    CHECK(namesOf(manager).size() == 8);
    manager.rescan(manager.getPath());
    CHECK(namesOf(manager) == Names{"In C", "Same", "Default Setting", "Root"});
    CHECK(manager.findByName("Root")->programLabel == "(0/3) Root");
    manager.rescan("");
    CHECK(manager.isEmpty());
    CHECK(manager.step(tree.root() + "Root.knp", PresetManager::nextPreset) == nullptr);
}

TEST_CASE("PresetManager: ten thousand presets, each with its number and its neighbours") {
    const PresetTree tree;
    constexpr std::size_t count = 10000;
    Names names;
    for (std::size_t i = 0; i < count; ++i) {
        std::string name = "_";
        name += std::to_string(i / 100) + " F/";
        names.push_back(name + std::to_string(10000 + i) + ".knp");
    }
    tree.add(names);
    PresetManager manager("", ".knp", noTime());
    manager.rescan(tree.root());
    std::vector<PresetEntry*> list;
    manager.allPresets(list);
    REQUIRE(list.size() == count);
    for (std::size_t i = 0; i < count; ++i) {
        REQUIRE(list[i]->name == std::to_string(10000 + i));
        REQUIRE(list[i]->bank == static_cast<int>(i / 128));
        REQUIRE(list[i]->program == static_cast<int>(i % 128));
    }
    CHECK(list[128]->programLabel == "(1/0) 10128");
    CHECK(manager.findProgram(1, 0) == list[128]);
    CHECK(manager.findProgram(78, 15) == list[9999]);
    CHECK(manager.findProgram(78, 16) == nullptr);
    CHECK(manager.findProgram(-1, 0) == nullptr);
    for (const std::size_t i : {std::size_t{0}, std::size_t{1}, std::size_t{5000}, count - 1}) {
        const std::string path = list[i]->path;
        CHECK(manager.step(path, PresetManager::nextPreset) == list[(i + 1) % count]);
        CHECK(manager.step(path, PresetManager::previousPreset) == list[(i + count - 1) % count]);
        CHECK(manager.step(path, 1) == nullptr);
    }
    CHECK(manager.step(tree.root() + "elsewhere.knp", PresetManager::nextPreset) == nullptr);
}

}  // namespace cinder::test
