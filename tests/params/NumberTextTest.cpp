#include "params/NumberText.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include "params/NoteName.h"
#include "params/ShortenName.h"
#include "support/Rng.h"

namespace cinder {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();

TEST_CASE("formatNumber: places, signs and infinities") {
    struct Row {
        float number;
        const char* format;
        const char* text;
    };
    const Row rows[] = {{1.2344f, "*3f", "1.234"},
                        {12.344f, "*3f", "12.34"},
                        {-123.44f, "*3f", "-123.4"},
                        {1234.4f, "*3f", "1234"},
                        {100.0f, "*3f", "100.0"},
                        {9.9994f, "*3f", "9.999"},
                        {9.9996f, "*3f", "10.00"},
                        {99.996f, "*3f", "100.0"},
                        {-0.0004f, "*3f", "0.000"},
                        {3e38f, "*3f x", "300000000549775575777803994281145270272 x"},
                        {3.0f, "*+2f", "+3.00"},
                        {1.0f, "*3f/%%", "1.000/%"},
                        {-0.004f, "%+.2f", "0.00"},
                        {0.004f, "%+.2f", "0.00"},
                        {-0.0f, "%.2f", "0.00"},
                        {2.5f, "%.0f", "2"},
                        {7.0f, "a %.1f b", "a 7.0 b"},
                        {infinity, "%.1f", "INF"},
                        {-infinity, "*3f", "-INF"},
                        {5.0f, "", ""},
                        {5.0f, "*", ""}};
    for (const Row& row : rows) {
        INFO(row.number << " as " << std::string(row.format));
        CHECK(formatNumber(row.number, row.format) == row.text);
    }
}

TEST_CASE("formatNumber: prints what printf prints") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    for (int i = 0; i < 3000; ++i) {
        const auto number =
            static_cast<float>(rng.real(-1.0, 1.0) * std::pow(10.0, rng.real(-4.0, 12.0)));
        if (std::abs(number) < 0.01f) continue;  // a zero may have lost its sign
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.3f", static_cast<double>(number));
        CHECK(formatNumber(number, "%.3f") == expected);
        std::snprintf(expected, sizeof expected, "%+.4e", static_cast<double>(number));
        CHECK(formatNumber(number, "%+.4e") == expected);
        std::snprintf(expected, sizeof expected, "%g", static_cast<double>(number));
        CHECK(formatNumber(number, "%g") == expected);
    }
}

TEST_CASE("Texts of frequencies and levels change their places with the size") {
    CHECK(frequencyText(1234.5f) == "1234.5");
    CHECK(frequencyText(12345.6f) == "12346");
    CHECK(frequencyText(99.99f) == "99.990");
    CHECK(frequencyText(100.0f) == "100.00");
    CHECK(frequencyText(9999.96f) == "10000");
    CHECK(frequencyText(999.996f) == "1000.0");
    CHECK(decibelText(-200.0f) == "-INF");
    CHECK(decibelText(-179.9f) == "-179.90");
    CHECK(decibelText(std::nanf("")) == "-INF");
    CHECK(decibelText(infinity) == "INF");
    CHECK(decibelText(0.0f) == "0.00");
    CHECK(decibelText(3.0f) == "+3.00");
}

TEST_CASE("takeNumber: decimal digits and nothing else") {
    struct Row {
        std::string text;
        float number;
        std::string rest;
    };
    const std::string nines(4000, '9'), zeros(4000, '0');
    const Row rows[] = {{"12.5 Hz", 12.5f, " Hz"},
                        {"+3", 3.0f, ""},
                        {"-.5k", -0.5f, "k"},
                        {"5.", 5.0f, ""},
                        {"1e3x", 1000.0f, "x"},
                        {"2e", 2.0f, "e"},
                        {"1.2.3", 1.2f, ".3"},
                        {"0x10", 0.0f, "x10"},
                        {"1e999!", infinity, "!"},
                        {"-1e999", -infinity, ""},
                        {"1e39", infinity, ""},
                        {"1e-999", 0.0f, ""},
                        {"1e99999999999999999999", infinity, ""},
                        {"1e-99999999999999999999", 0.0f, ""},
                        {nines, infinity, ""},
                        {"0." + zeros + "1", 0.0f, ""},
                        {zeros + "1", 1.0f, ""},
                        {"0." + zeros + "1e4002 a", 10.0f, " a"},
                        {std::string("1\0", 2), 1.0f, std::string(1, '\0')}};
    for (const Row& row : rows) {
        INFO(row.text.substr(0, 40));
        std::string_view text = row.text;
        float number = -1.0f;
        CHECK(takeNumber(text, number));
        CHECK(number == row.number);
        CHECK(text == row.rest);
    }
    for (const char* none : {"", "-", "+-1", "--1", ".", "-.", "e5", "inf", "-nan", "nan(1)", " 1",
                             "\xc2\xbd", "\xef\xbc\x91", "infinity"}) {
        INFO(std::string(none));
        std::string_view text = none;
        float number = 7.0f;
        CHECK(!takeNumber(text, number));
        CHECK(number == 7.0f);
        CHECK(text == none);
    }
}

TEST_CASE("Note names: letter, accidental, octave, cents") {
    struct Row {
        const char* text;
        double note;  // A4 is 69
    };
    const Row rows[] = {
        {"A4", 69.0},      {"a", 69.0},           {"  c-1", 0.0},          {"C#3 25", 49.25},
        {"C#3+25", 49.25}, {"bb2 -50.5", 45.495}, {"Cb4", 59.0},           {"B", 71.0},
        {"G 5", 79.0},     {"F#", 66.0},          {"E3 .5 cents", 52.005}, {"D4.", 62.0}};
    for (const Row& row : rows) {
        INFO(std::string(row.text));
        float hz = 0.0f;
        CHECK(parseNoteName(row.text, hz));
        CHECK(hz == doctest::Approx(440.0 * std::exp2((row.note - 69.0) / 12.0)).epsilon(2e-6));
    }
    float hz = 7.0f;
    for (const char* none : {"", "H4", "#4", "4A", "\xc3\x84"})
        CHECK(!parseNoteName(none, hz));
    CHECK(hz == 7.0f);
}

TEST_CASE("shortenName: takes away no more than it must") {
    struct Row {
        const char* name;
        int limit;
        const char* shortened;
    };
    const Row rows[] = {{"Band 2 Output Frequency", 0, "Band 2 Output Frequency"},
                        {"Band 2 Output Frequency", 23, "Band 2 Output Frequency"},
                        {"Band 2 Output Frequency", 18, "Band 2 Output Freq"},
                        {"Band 2 Output Frequency", 17, "B2OFreq"},
                        {"Band 2 Output Frequency", 8, "B2OFreq"},
                        {"Band 2 Output Frequency", 6, "2OFreq"},
                        {"Band 2 Output Frequency", 5, "2OFrq"},
                        {"Band 2 Output Frequency", 1, "2"},
                        {"High Shelf Low Cut", 16, "HiShelf LoCut"},
                        {"High Shelf Low Cut", 12, "HS LC"},
                        {"High Shelf Low Cut", 4, "HSLC"},
                        {"XLFO2 Phase  Offset ", 12, "XLFO2POffset"},
                        {"XLFO2 Phase  Offset ", 9, "XLFO2POff"},
                        {"Solo (Mute)", 6, "SMt"},
                        {"A1234", 4, "1234"},
                        {"a1", 1, "1"},
                        {"    ", 3, ""},
                        {"\xc3\x9c"
                         "ber \xc3\x84nderung",
                         9, "\xc3\x9c\xc3\x84ndrng"},
                        {"\xc3\x84\xc3\x84", 3, "\xc3\x84"}};
    for (const Row& row : rows) {
        INFO(std::string(row.name) << " in " << row.limit);
        CHECK(shortenName(row.name, row.limit) == row.shortened);
    }
    CHECK(cutText("1\xe2\x82\xac", 3) == "1");
    CHECK(cutText("abc", -1).empty());
}

}  // namespace
}  // namespace cinder
