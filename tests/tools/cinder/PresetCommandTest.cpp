#include "support/TemporaryFolder.h"
#include "tools/cinder/Program.h"

#include <doctest/doctest.h>
#include <stdlib.h>

#include <string>
#include <vector>

namespace cinder::test {

namespace {

/// A folder, and commands on the files in it.
struct PresetShop {
    TemporaryFolder folder;

    std::string path(const std::string& name) const { return (folder / name).string(); }
    Program::Outcome run(const std::string& verb, const std::vector<std::string>& names) const {
        std::vector<std::string> arguments{"preset", verb};
        for (const std::string& name : names)
            arguments.push_back(path(name));
        return Program::run(arguments);
    }
    std::string show(const std::string& name) const { return run("show", {name}).out; }
    void convert(const std::string& from, const std::string& to) const {
        const Program::Outcome outcome = run("convert", {from, to});
        INFO(outcome.err);
        REQUIRE(outcome.status == 0);
    }
    std::size_t sizeOf(const std::string& name) const { return bytesOf(folder / name).size(); }
};

constexpr const char* oldText =
    "Intent: Loud.\nTags: test\nFormat: 2\n\n"
    "Input Gain = +3.00 dB\n\nBand 1 Style = Warm Tube\nBand 1 Drive = 45.5678%\n";

}  // namespace

TEST_CASE("preset: from text to file and back; an old one becomes a present one") {
    const PresetShop shop;
    putBytes(shop.folder / "a.txt", oldText);
    CHECK(shop.show("a.txt") == std::string("# a text\n") + oldText);
    shop.convert("a.txt", "a.knp");
    CHECK(shop.sizeOf("a.knp") == 12 + 4 * 768);
    shop.convert("a.knp", "b.knp");
    CHECK(shop.sizeOf("b.knp") == 3608);
    CHECK(shop.run("diff", {"a.knp", "b.knp"}).out == "no difference\n");
    const std::string shown = shop.show("b.knp");
    CHECK(shown.starts_with("# a preset of version 4 with 899 values\nInput Gain = "));
    putBytes(shop.folder / "shown.txt", shown);
    shop.convert("shown.txt", "c.KNP");
    CHECK(bytesOf(shop.folder / "c.KNP") == bytesOf(shop.folder / "b.knp"));
    shop.convert("a.knp", "a.knp");
    CHECK(bytesOf(shop.folder / "a.knp") == bytesOf(shop.folder / "b.knp"));

    putBytes(shop.folder / "other.txt", "Band 1 Drive = 45.57%\nMix = 20%\n");
    const Program::Outcome diff =
        Program::run({"preset", "diff", shop.path("b.knp"), shop.path("other.txt"), "--csv"});
    CHECK(
        diff.out.ends_with("Input Gain,+3.00 dB,0.00 dB\nMix,100.0%,20.00%\n"
                           "Band 1 Style,Warm Tube,Clean Tube\n"
                           "Band 1 Drive,45.5678%,45.57%\n"));
}

TEST_CASE("preset: components go by their ending and stay what they are") {
    const PresetShop shop;
    struct Case {
        const char *ending, *text;
        std::size_t numValues;
    };
    const Case cases[] = {{".band", "Band 1 Drive = 45.00%\n", 14},
                          {".xlfo", "Num Active XLFO 1 Steps = 4\n", 73},
                          {".eg", "EG 1 Sustain = -6.0206 dB\n", 8},
                          {".ef", "EF 1 Attack = 0.1009 sec\n", 3},
                          {".midi", "MIDI Source 1 Controller Number = 7\n", 3}};
    putBytes(shop.folder / "all.txt", "");
    shop.convert("all.txt", "all.knp");
    for (const Case& row : cases) {
        const std::string name = std::string("a") + row.ending;
        INFO(name);
        putBytes(shop.folder / "a.txt", row.text);
        shop.convert("a.txt", name);
        CHECK(shop.sizeOf(name) == 12 + 4 * row.numValues);
        shop.convert(name, "b.txt");
        CHECK(bytesOf(shop.folder / "b.txt") == row.text);
        for (const auto& [from, to] : {std::pair{name, std::string("b.knp")}, {"all.knp", name}}) {
            const Program::Outcome outcome = shop.run("convert", {from, to});
            CHECK(outcome.status == 2);
            CHECK(outcome.err.find("can become a text or a") != std::string::npos);
        }
        CHECK(shop.run("diff", {name, "all.knp"}).status == 2);
        for (const char* wrong : {"wrong.knp", "wrong.band", "wrong.eg"}) {
            const std::string ending = std::string(wrong).substr(5);
            putBytes(shop.folder / wrong, bytesOf(shop.folder / name));
            CHECK(shop.run("show", {wrong}).status == (ending == row.ending ? 0 : 1));
        }
    }
    putBytes(shop.folder / "wrong.ef", bytesOf(shop.folder / "all.knp"));
    CHECK(shop.run("show", {"wrong.ef"}).status == 1);
}

TEST_CASE("preset: what is broken is refused by name, and nothing is written") {
    const PresetShop shop;
    putBytes(shop.folder / "a.txt", "Band 1 State = Solo\n");
    shop.convert("a.txt", "a.knp");
    const std::string good = bytesOf(shop.folder / "a.knp");
    struct Case {
        const char *file, *complaint;
        std::string bytes;
    };
    const std::string head = good.substr(0, 4), rest = good.substr(8);
    const Case cases[] = {
        {"short.knp", "ends before its values do", good.substr(0, 3607)},
        {"short2.knp", "is no preset of Cinder", good.substr(0, 11)},
        {"new.knp", "is of version 5", head + std::string("\5\0\0\0", 4) + rest},
        {"none.knp", "is of version 0", head + std::string("\0\0\0\0", 4) + rest},
        {"fewer.knp", "no preset of Cinder",
         good.substr(0, 8) + std::string("\xff\xff\xff\xff", 4) + good.substr(12)},
        {"state", "is no state of Cinder, or not a whole one", "KNBS" + good.substr(4)},
        {"other", "is no preset, component preset", "RIFF"},
        {"bad.txt", "line 2: \"x\" is no value of Mix", "# x\nMix = x"},
    };
    for (const Case& row : cases) {
        INFO(row.file);
        putBytes(shop.folder / row.file, row.bytes);
        const Program::Outcome outcome = shop.run("convert", {row.file, "out.knp"});
        CHECK(outcome.status == 1);
        INFO(outcome.err);
        CHECK(outcome.err.find(row.complaint) != std::string::npos);
    }
    putBytes(shop.folder / "old.txt", "Format: 3\nBand 1 State = Solo");
    CHECK(shop.run("convert", {"old.txt", "out.knp"}).err.find("does not hold Band 1 State") !=
          std::string::npos);
    CHECK(shop.run("convert", {"a.txt", "out.band"}).status == 1);
    CHECK(shop.run("convert", {"a.txt", "out.wav"}).status == 2);
    for (const std::string& name : shop.folder.names())
        CHECK(!name.starts_with("out."));

    // More values promised than we have use for are nobody's loss.
    putBytes(shop.folder / "more.knp",
             good.substr(0, 8) + std::string("\xff\xff\xff\x7f", 4) + good.substr(12));
    CHECK(shop.run("diff", {"more.knp", "a.knp"}).out == "no difference\n");
}

TEST_CASE("controllers: the user's map or a file, made where it is missing") {
    const TemporaryFolder folder;
    const auto run = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "controllers");
        return Program::run(arguments, [&] { ::setenv("XDG_DATA_HOME", folder.path.c_str(), 1); });
    };
    CHECK(run({"show"}).out == "no controller moves a parameter\n");
    CHECK(run({"set", "74", "band 1 drive"}).status == 0);
    CHECK(run({"set", "1", "4"}).status == 0);
    CHECK(run({"set", "2", "Mix"}).status == 0);  // takes it away from 1
    CHECK(run({"show", "--csv"}).out == "controller,id,parameter\n2,4,Mix\n74,10,Band 1 Drive\n");
    CHECK(run({"clear", "74"}).status == 0);
    CHECK(run({"show", "--csv"}).out == "controller,id,parameter\n2,4,Mix\n");
    const auto file = folder / "Kestrelon/Cinder/MidiControllerMap.knm";
    CHECK(bytesOf(file).size() == 520);
    CHECK(run({"clear", "--file", file.string()}).status == 0);
    CHECK(run({"show"}).out == "no controller moves a parameter\n");

    putBytes(file, "KNCM");
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"show"}, {"set", "1", "Mix"}, {"clear", "1"}}) {
        const Program::Outcome outcome = run(arguments);
        CHECK(outcome.status == 1);
        CHECK(outcome.err.find("MidiControllerMap.knm") != std::string::npos);
    }
    CHECK(bytesOf(file) == "KNCM");
    CHECK(run({"clear"}).status == 0);
    CHECK(bytesOf(file).size() == 520);
    CHECK(run({"show", "--file", "/nowhere"}).status == 1);
    CHECK(run({"set", "128", "Mix"}).status == 2);
    CHECK(run({"set", "1", "Mixx"}).status == 2);
}

TEST_CASE("archive: what is packed is listed and comes out again") {
    const TemporaryFolder folder;
    const auto path = [&](const std::string& name) { return (folder / name).string(); };
    const auto status = [](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "archive");
        return Program::run(arguments).status;
    };
    for (const char* const name : {"s/factory/A/Loud.txt", "s/components/Band/Default.txt"}) {
        std::filesystem::create_directories((folder / name).parent_path());
        putBytes(folder / name, "Band 1 Drive = 70%\n");
    }
    CHECK(status({"pack", path("s"), path("a.bin")}) == 0);
    const std::string listed = Program::run({"archive", "list", path("a.bin"), "--csv"}).out;
    CHECK(listed.find("FactoryPresets/A/Loud.knp,3584,") != std::string::npos);
    CHECK(listed.find("Band/Default.band,68,") != std::string::npos);

    const std::string out = path("out/A/Loud.knp");
    CHECK(status({"extract", path("a.bin"), "factorypresets", path("out")}) == 0);
    const std::string preset = bytesOf(out);
    CHECK(preset.size() == 3584);
    putBytes(out, "mine");
    CHECK(status({"extract", path("a.bin"), "FactoryPresets", path("out")}) == 0);
    CHECK(bytesOf(out) == "mine");
    CHECK(status({"extract", path("a.bin"), "FactoryPresets", path("out"), "--overwrite"}) == 0);
    CHECK(bytesOf(out) == preset);

    CHECK(status({"extract", path("a.bin"), "Nothing", path("out")}) == 1);
    CHECK(status({"list", out}) == 1);
    putBytes(folder / "s/factory/A/Bad.txt", "Band 1 Drive = loud\n");
    const std::string before = bytesOf(folder / "a.bin");
    CHECK(status({"pack", path("s"), path("a.bin")}) == 1);
    CHECK(bytesOf(folder / "a.bin") == before);
}

}  // namespace cinder::test
