#include "tools/cinder/Program.h"

#include <doctest/doctest.h>

#include <algorithm>

namespace cinder::test {

TEST_CASE("styles: a row for each style asked for, and a word on what makes no sense") {
    const auto table = Program::run(
        {"styles", "--style", "clean-tape", "--style", "Smudge", "--rate", "44100", "--level=-24"});
    CHECK(table.status == 0);
    CHECK(std::count(table.out.begin(), table.out.end(), '\n') == 5);  // three lines of titles
    CHECK(table.out.find("\nClean Tape  ") < table.out.find("\nSmudge  "));

    const auto markdown = Program::run({"styles", "--markdown", "--style", "Smudge"});
    CHECK(markdown.out.starts_with("| Style | THD 0, % |"));
    CHECK(markdown.out.find("\n| Smudge | 0.00 |") != std::string::npos);

    const std::pair<std::string, std::string> mistakes[] = {
        {"--style=Clean", "there is no style 'Clean'"},
        {"--rate=44099", "--rate takes a whole number from 44100 to 384000"},
        {"--level=loud", "--level takes a number of dBFS from -100 to 24"}};
    for (const auto& [option, complaint] : mistakes) {
        const auto outcome = Program::run({"styles", option});
        INFO(outcome.err);
        CHECK(outcome.status == 2);
        CHECK(outcome.err.find(complaint) != std::string::npos);
    }
}

}  // namespace cinder::test
