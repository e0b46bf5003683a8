#include "presets/files/CompareNames.h"

#include <doctest/doctest.h>

#include <string>
#include <string_view>

namespace cinder::test {

TEST_CASE("compareNames: A to Z alone fold, then bytes decide, and what is shorter is first") {
    const std::string_view inOrder[] = {"",   "!", "[a", "_",         "A",         "aB",
                                        "AC", "z", "{",  "\xc3\x84z", "\xc3\xa4y", "\xff"};
    for (const auto& a : inOrder)
        for (const auto& b : inOrder) {
            CAPTURE(a);
            CAPTURE(b);
            const int order = compareNames(a, b);
            CHECK((order < 0) == (&a < &b));
            CHECK((order == 0) == (&a == &b));
        }
    CHECK(compareNames("DEFAULT @[`{", "default @[`{") == 0);
    CHECK(compareNames("[", "{") != 0);
}

TEST_CASE("matchesPattern: a star is any bytes, and nothing else is special") {
    struct Case {
        std::string_view name, pattern;
        bool matches;
    };
    const Case cases[] = {
        {"Lead.knp", "*.knp", true},
        {"LEAD.KNP", "*.knp", true},
        {".knp", "*.knp", true},
        {"Lead.knpx", "*.knp", false},
        {"Leadknp", "*.knp", false},
        {"a.knp.knp", "*.knp", true},
        {"", "*", true},
        {"", "", true},
        {"a", "", false},
        {"abcabd", "*ab*d", true},
        {"abcabe", "*ab*d", false},
        {"ab", "a?", false},
        {"\xff\xfe.knp", "*.knp", true},
        {"ac", "a**c", true},
    };
    for (const Case& row : cases) {
        CAPTURE(row.name);
        CAPTURE(row.pattern);
        CHECK(matchesPattern(row.name, row.pattern) == row.matches);
    }
}

}  // namespace cinder::test
