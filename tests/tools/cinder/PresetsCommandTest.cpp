#include "tools/cinder/Program.h"

#include <doctest/doctest.h>
#include <stdlib.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>
#include <vector>

#include "support/TemporaryFolder.h"

namespace cinder::test {

namespace {

void add(const std::filesystem::path& file) {
    std::filesystem::create_directories(file.parent_path());
    putBytes(file, "");
}

std::string outputIn(const TemporaryFolder& home, const std::vector<std::string>& arguments) {
    const Program::Outcome outcome = Program::run(arguments, [&] {
        ::setenv("HOME", home.path.c_str(), 1);
        for (const char* const name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            ::unsetenv(name);
    });
    INFO(outcome.err);
    CHECK(outcome.status == 0);
    return outcome.out;
}

}  // namespace

TEST_CASE("presets: the tree as the menu shows it, from the folder that the settings name") {
    const TemporaryFolder home;
    const std::string documents = (home / "Documents/Kestrelon/Cinder").string();
    for (const char* const name : {"Clean.knp", "Drums/Hot.knp", "_1 Best/B\n\xff.knp",
                                   "_1 Best/a.KNP", "_2 None/x.band", ".hidden/x.knp"})
        add(std::filesystem::path(documents) / name);
    const std::string below =
        "/\n"
        "    Best/\n"
        "        (0/0) a\n"
        "        (0/1) B?\xef\x83\xbf\n"
        "    None/\n"
        "        (No Presets)\n"
        "    Drums/\n"
        "        (0/2) Hot\n"
        "    (0/3) Clean\n";
    CHECK(outputIn(home, {"presets"}) == documents + below);

    const auto list = nlohmann::json::parse(outputIn(home, {"presets", "--json"}));
    REQUIRE(list.size() == 4);
    CHECK(list[2]["program"] == 2);
    CHECK(list[2]["folder"] == "Drums/");
    CHECK(list[2]["path"] == documents + "/Drums/Hot.knp");

    const std::filesystem::path settings = home / ".config/kestrelon/cinder/1.0/settings.conf";
    add(home / "My Sounds/Own.knp");
    std::filesystem::create_directories(settings.parent_path());
    const std::string own = (home / "My Sounds").string();
    putBytes(settings, "PresetFolder=text:" + own + "\n");
    CHECK(outputIn(home, {"presets"}) == own + "/\n    (0/0) Own\n");
    putBytes(settings, "PresetFolder=text:\\no\\such\\folder\\\n");
    CHECK(outputIn(home, {"presets"}) == documents + below);

    add(home / ".local/share/Kestrelon/Cinder/Component Presets/XLFO/Sine.xlfo");
    CHECK(outputIn(home, {"presets", "--kind", "xlfo"}).ends_with("/XLFO/\n    Sine\n"));
    CHECK(outputIn(home, {"presets", "--folder", documents + "/_2 None", "--kind", "band"}) ==
          documents + "/_2 None/\n    x\n");

    const std::string nowhere = (home / "nowhere").string();
    CHECK(Program::run({"presets", "--folder", nowhere}).status == 1);
    CHECK(Program::run({"presets", "--kind", "chord"}).status == 2);
}

}  // namespace cinder::test
