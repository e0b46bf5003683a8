#include "plugin/settings/SettingsText.h"

#include <doctest/doctest.h>

#include <string>

#include "plugin/settings/SettingValue.h"
#include "support/Rng.h"

namespace cinder::test {
namespace {

std::string randomBytes(Rng& rng, std::string_view from) {
    std::string bytes;
    for (int left = rng.integer(0, 12); left > 0; --left) {
        const bool isAny = from.empty() || rng.integer(0, 9) == 0;
        bytes +=
            isAny
                ? static_cast<char>(rng.integer(0, 255))
                : from[static_cast<std::size_t>(rng.integer(0, static_cast<int>(from.size()) - 1))];
    }
    return bytes;
}

TEST_CASE("SettingsText: every name and text comes back, in a line a person can read") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    SettingsText text;
    for (int i = 0; i < 2000; ++i) {
        const std::string name = (i % 8 == 1 ? "\xef\xbb\xbf" : "") +
                                 randomBytes(rng, i % 2 ? "=#:% \t\\/aB\xc3\xa9" : "");
        const std::string value =
            randomBytes(rng, i % 3 ? "=#:% \r\n\\/aB\xe2\x82\xac\xed\xa0" : "");
        text.set(name, encodeSetting(value));
        const SettingsText again(text.content());
        const auto found = again.find(name);
        REQUIRE(found);
        REQUIRE(decodeSetting<std::string>(*found) == value);
        REQUIRE(again.content() == text.content());
        if (i % 50 == 49) text = SettingsText();
    }
    for (const char* plain : {"\\home\\Zo\xc3\xab\\Presets\\", "50=5 # 6", ""})
        CHECK(encodeSetting(std::string(plain)) == std::string("text:") + plain);
    CHECK(encodeSetting(std::string(" 5% \n\x80\xc3")) == "text:%205%25 %0A%80%C3");
}

TEST_CASE("SettingsText: what a person writes is understood, what nobody understands is kept") {
    const std::string before =
        "\xef\xbb\xbf"
        "Help = int:1\r\n"
        "# RetinaEnabled=int:3\n"
        "\n"
        "garbage \x01\xff\n"
        "HELP=int:2\n"
        "Later=float:0.5\n"
        "RetinaEnabled = int:\t150 \n"
        "Folder=text: 100% \\x%2\\%41 ";
    SettingsText text(before);
    CHECK(text.content() == before + "\n");
    CHECK(text.find("help") == "int:2");
    CHECK(decodeSetting<std::int32_t>(*text.find("retinaENABLED")) == 150);
    CHECK(decodeSetting<std::string>(*text.find("Folder")) == "100% \\x%2\\A");
    CHECK(!text.find("garbage \x01\xff"));

    text.set("Help", "int:3");
    text.set("Later", "int:4");
    text.set("New", "int:5");
    CHECK(text.content() ==
          "# RetinaEnabled=int:3\n\ngarbage \x01\xff\nHelp=int:3\nLater=int:4\n"
          "RetinaEnabled = int:\t150 \nFolder=text: 100% \\x%2\\%41 \nNew=int:5\n");
}

TEST_CASE("SettingValue: a value of another type, or that isn't read to its end, is none") {
    for (const char* bad : {"", "int", "int:", "5", "int:5x", "int:+5", "int:0x5", "int:5.0",
                            "int:2147483648", "Int:5", "text:5", "int:5 5"})
        CHECK_MESSAGE(!decodeSetting<std::int32_t>(bad), bad);
    for (const char* bad : {"", "bytes", "bytes:0", "bytes:0g", "bytes:+1", "bytes:00 1", "int:11"})
        CHECK_MESSAGE(!decodeSetting<SettingBytes>(bad), bad);
    CHECK(!decodeSetting<std::string>("int:5"));
    for (const std::int32_t value : {0, -1, 2147483647, -2147483647 - 1})
        CHECK(decodeSetting<std::int32_t>(encodeSetting(value)) == value);
    const SettingBytes bytes = {0, 0x7f, 0x80, 0xff};
    CHECK(decodeSetting<SettingBytes>(encodeSetting(bytes)) == bytes);
    CHECK(decodeSetting<SettingBytes>("bytes:") == SettingBytes());
}

}  // namespace
}  // namespace cinder::test
