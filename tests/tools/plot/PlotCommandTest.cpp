#include "tools/audio/AudioFixtures.h"
#include "tools/cinder/Program.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

namespace cinder::test {

using Names = std::vector<std::string>;

TEST_CASE("plot: each kind draws, and says where") {
    const TemporaryFolder folder;
    const Names kinds[] = {
        {"style", "smudge", "--drive", "20,80", "--level", "-18", "--rate", "44100"},
        {"style", "lead-amp", "--cabinet", "--size", "900x500"},
        {"crossover", "--crossover", "120,800,5000", "--slope", "48"},
        {"tone", "--gain", "-3,3"},
        {"filter", "--shape", "low-pass", "--frequency", "5000", "--q", "2", "--slope", "24"},
        {"cabinet", "4"},
    };
    for (const Names& kind : kinds) {
        Names arguments = {"plot"};
        arguments.insert(arguments.end(), kind.begin(), kind.end());
        const std::string out = (folder / (kind[0] + ".svg")).string();
        arguments.push_back(out);
        const Program::Outcome outcome = Program::run(arguments);
        INFO(kind[0] << ": " << outcome.err);
        CHECK(outcome.status == 0);
        CHECK(outcome.out == "Drew '" + out + "'\n");
        CHECK(bytesOf(out).ends_with("</svg>\n"));
    }
}

TEST_CASE("plot: a wrong command is one clear line and status 2, and draws nothing") {
    const TemporaryFolder folder;
    const std::string out = (folder / "out.png").string();
    const struct {
        Names arguments;
        const char* says;
    } cases[] = {
        {{}, "style, crossover, tone, filter, cabinet"},
        {{"stile", out}, "no command 'stile'; `cinder plot --help`"},
        {{"tone"}, "OUT is required; `cinder plot tone --help`"},
        {{"tone", out, "more"}, "more"},
        {{"style", "Hot Tube", out}, "Warm Tube"},
        {{"style", "Smudge", out, "--drive", "0,101"}, "0 to 100"},
        {{"style", "Smudge", out, "--drive", "1,2,3,4,5,6"}, "5 values"},
        {{"style", "Smudge", out, "--rate", "44.1k"}, "from 8000 to 384000"},
        {{"crossover", out, "--crossover", "800,120"}, "ascend"},
        {{"crossover", out, "--crossover", "100,200", "--bands", "2"}, "1 and not 2"},
        {{"crossover", out, "--bands", "7"}, "from 1 to 6"},
        {{"crossover", out, "--slope", "18"}, "6, 12, 24, 36, 48"},
        {{"filter", out, "--shape", "notch"}, "low shelf"},
        {{"filter", out, "--gain", "31"}, "from -30 to 30"},
        {{"cabinet", "5", out}, "from 1 to 4"},
        {{"tone", out, "--size", "800"}, "WIDTHxHEIGHT"},
        {{"tone", out, "--size", "800x"}, "from 480 to 8000"},
    };
    for (const auto& [arguments, says] : cases) {
        Names all = {"plot"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const Program::Outcome outcome = Program::run(all);
        INFO(outcome.err);
        CHECK(outcome.status == 2);
        CHECK(outcome.out.empty());
        CHECK(isOneLine(outcome.err.substr(0, outcome.err.size() - 1)));
        CHECK(outcome.err.find(says) != std::string::npos);
    }
    CHECK(folder.names().empty());
}

}  // namespace cinder::test
