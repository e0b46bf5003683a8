#include <doctest/doctest.h>

#include <filesystem>
#include <string>

#include "plugin/settings/PluginSettings.h"
#include "support/TemporaryFolder.h"

namespace cinder::test {
namespace {

struct FolderChoice final : PresetFolderChoice {
    std::string currentPresetFolder() const override { return current; }
    std::string defaultPresetFolder() const override { return "\\docs\\"; }
    void usePresetFolder(const std::string& path) override {
        if (path != current) current = path == "\\gone\\" ? defaultPresetFolder() : path;
    }
    std::string current;
};

/// One process: what its instances share, and the life of one of them.
struct Process {
    explicit Process(const std::filesystem::path& root, std::string text = "1.20")
        : product{root, R"(Software\Kestrelon\Cinder\1.0)"},
          family{root, R"(Software\Kestrelon)"},
          shared(product),
          own(product) {
        version.text = std::move(text);
        all().read(product, family);
        if (version.isFirstRun) isWritten = all().write(product);
        shared.live = true;
        own.live = true;
    }
    PluginSettings all() { return {shared, own, folder, version}; }

    SettingsKey product, family;
    SharedSettings shared;
    CinderSettings own;
    FolderChoice folder;
    RunningVersion version;
    bool isWritten = false;
};

int storedInt(const Process& process, const std::string& name) {
    return SettingsFileReader(process.product).intValue(name, 0, -999);
}

void storeInt(const SettingsKey& key, const std::string& name, int value) {
    SettingsFileWriter writer(key);
    writer.intValue(name, value, 0);
    REQUIRE(writer.commit());
}

TEST_CASE("Settings: a version welcomes once, and all keys are in the store after its first run") {
    const TemporaryFolder folder;
    for (const char* version : {"1.20", "1.21"}) {
        {
            Process first(folder.path, version);
            CHECK(first.isWritten);
            CHECK(!first.version.isFirstRun);
            CHECK(first.shared.showWelcomeHint);
            first.shared.showWelcomeHint = false;  // as the window does
        }
        Process next(folder.path, version);
        CHECK(!next.isWritten);
        CHECK(!next.shared.showWelcomeHint);
    }
    const std::string text = bytesOf(folder / "kestrelon/cinder/1.0/settings.conf");
    CHECK(text.substr(text.find("left alone.\n") + 12) ==
          "CorrectDigiProductIds=int:1\n"
          "EnableMIDIProgramChanges=int:0\n"
          "GraphicsAcceleration=int:1\n"
          "RetinaEnabled=int:1\n"
          "SavePresetItemEnabled=int:0\n"
          "showInteractiveHelp=int:1\n"
          "showWelcomeHint=int:0\n"
          "ShowComponentDisplays=int:1\n"
          "InterfaceLayout=int:0\n"
          "ShowModulation=int:0\n"
          "PresetFolder=text:\\docs\\\n"
          "CurrentVersion=text:1.21\n");
}

TEST_CASE("Settings: stored values are clamped, and the factor of windows follows") {
    struct Row {
        int stored, retina;
        float scale;
    };
    for (const Row row : {Row{50, 50, 1.0f}, Row{1, 1, 0.0f}, Row{0, 0, 1.0f}, Row{150, 150, 1.5f},
                          Row{301, 300, 3.0f}, Row{-5, 0, 1.0f}, Row{99, 99, 1.0f}}) {
        const TemporaryFolder folder;
        const SettingsKey key{folder.path, R"(Software\Kestrelon\Cinder\1.0)"};
        storeInt(key, "RetinaEnabled", row.stored);
        storeInt(key, "InterfaceLayout", row.stored - 10);
        const Process process(folder.path);
        CHECK(process.shared.retinaEnabled == row.retina);
        CHECK(process.shared.forcedScale() == doctest::Approx(row.scale));
        CHECK(process.own.layout.get() ==
              (row.stored > 10 ? InterfaceLayout::Wide : InterfaceLayout::Normal));
        CHECK(storedInt(process, "RetinaEnabled") == row.retina);  // mended by the first run
    }
}

TEST_CASE("Settings: the family's values go first for this run and are never copied") {
    const TemporaryFolder folder;
    const SettingsKey family{folder.path, "Software\\Kestrelon"};
    storeInt(family, "GraphicsAcceleration", 0);
    storeInt(family, "RetinaEnabled", 200);
    Process process(folder.path);  // the write of a first run does not end it
    CHECK(process.isWritten);
    CHECK(process.shared.rendererMode() == GraphicsAccelerationMode::Off);
    CHECK(process.shared.forcedScale() == 2.0f);
    process.shared.showInteractiveHelp = false;
    CHECK(storedInt(process, "GraphicsAcceleration") == 1);
    CHECK(storedInt(process, "RetinaEnabled") == 1);

    std::filesystem::remove(family.file());
    process.all().read(process.product, process.family);
    CHECK(process.shared.rendererMode() == GraphicsAccelerationMode::Sixty);
    CHECK(process.shared.forcedScale() == 0.0f);
    // Bits above the mode are for the renderer.
    storeInt(process.product, "GraphicsAcceleration", 0x10002);
    process.all().read(process.product, process.family);
    CHECK(static_cast<int>(process.shared.rendererMode()) == 0x10002);
}

TEST_CASE("Settings: a change is stored at once, a bracket of changes once, and only when live") {
    const TemporaryFolder folder;
    Process process(folder.path);
    CHECK(!process.shared.midiProgramChangesEnabled());
    process.shared.enableMidiProgramChanges = true;
    CHECK(process.shared.midiProgramChangesEnabled());
    CHECK(storedInt(process, "EnableMIDIProgramChanges") == 1);
    {
        const UpdateBracket bracket(process.own);
        process.own.layout = InterfaceLayout::Wide;
        process.own.showModulation = true;
        CHECK(storedInt(process, "InterfaceLayout") == 0);
    }
    CHECK(storedInt(process, "InterfaceLayout") == 1);
    CHECK(storedInt(process, "ShowModulation") == 1);
    process.own.live = false;
    process.own.showModulation = false;
    CHECK(storedInt(process, "ShowModulation") == 1);

    Process next(folder.path);
    CHECK(next.own.layout.get() == InterfaceLayout::Wide);
    CHECK(next.shared.midiProgramChangesEnabled());
}

TEST_CASE("Settings: two processes that change different values both have their way") {
    const TemporaryFolder folder;
    Process one(folder.path), two(folder.path);
    two.shared.retinaEnabled.assign(150);
    two.own.layout = InterfaceLayout::Wide;
    one.shared.showInteractiveHelp = false;
    one.own.showModulation = true;
    CHECK(storedInt(one, "RetinaEnabled") == 150);
    CHECK(storedInt(one, "InterfaceLayout") == 1);
    CHECK(storedInt(one, "showInteractiveHelp") == 0);

    // A further instance reads into live objects; that writes nothing back.
    one.all().read(one.product, one.family);
    CHECK(one.shared.retinaEnabled == 150);
    CHECK(storedInt(one, "showInteractiveHelp") == 0);

    // What was taken away is stored again with the next change, and what is mistyped is mended.
    putBytes(one.product.file(), "RetinaEnabled=text:big\nshowWelcomeHint=int:1\n");
    one.shared.savePresetItemEnabled = true;
    CHECK(storedInt(one, "RetinaEnabled") == 150);
    CHECK(storedInt(one, "ShowComponentDisplays") == 1);
}

TEST_CASE("Settings: what can't be stored lives on in memory, through every read") {
    const TemporaryFolder folder;
    const auto config = folder / "config";
    putBytes(config, "");  // a file where the folder should be
    Process process(config);
    CHECK(process.shared.showWelcomeHint);
    CHECK(!process.version.isFirstRun);
    process.shared.showWelcomeHint = false;
    process.shared.retinaEnabled.assign(200);
    process.all().read(process.product, process.family);
    CHECK(!process.version.isFirstRun);
    CHECK(!process.shared.showWelcomeHint);
    CHECK(process.shared.retinaEnabled == 200);

    std::filesystem::remove(config);
    process.shared.showInteractiveHelp = false;
    CHECK(storedInt(process, "RetinaEnabled") == 200);
    storeInt(process.product, "RetinaEnabled", 300);
    process.all().read(process.product, process.family);
    CHECK(process.shared.retinaEnabled == 300);
}

TEST_CASE("Settings: a preset folder that is gone gives the default one, which is stored next") {
    const TemporaryFolder folder;
    Process process(folder.path);
    const auto storedFolder = [&] {
        return SettingsFileReader(process.product).stringValue("PresetFolder", "", "");
    };
    process.folder.current = "\\home\\Zo\xc3\xab\\";
    REQUIRE(process.all().write(process.product));
    CHECK(storedFolder() == "\\home\\Zo\xc3\xab\\");
    CHECK(Process(folder.path).folder.current == "\\home\\Zo\xc3\xab\\");
    process.folder.current = "\\gone\\";
    REQUIRE(process.all().write(process.product));
    Process next(folder.path);
    CHECK(next.folder.current == "\\docs\\");
    CHECK(storedFolder() == "\\gone\\");
    REQUIRE(next.all().write(next.product));
    CHECK(storedFolder() == "\\docs\\");
}

TEST_CASE("Settings: a product stores only what its window can do") {
    const TemporaryFolder folder;
    const SettingsKey key{folder.path, "Kestrelon\\Other"};
    const auto namesStored = [&](const InterfaceShape& shape) {
        std::filesystem::remove(key.file());
        Settings(key, shape).save();
        const std::string text = bytesOf(key.file());
        std::string found;
        for (const char* name :
             {"InterfaceLayout", "InterfacePanels", "InterfaceWidth", "InterfaceHeight"})
            if (text.find(name) != text.npos) found += name[9];
        return found;
    };
    CHECK(namesStored({}) == "");
    CHECK(namesStored({.sizeCount = 1}) == "");
    CHECK(namesStored({.sizeCount = 2}) == "L");
    CHECK(namesStored({.panelCount = 1}) == "P");
    CHECK(namesStored({.isResizable = true, .leastWidth = 600}) == "LWH");

    storeInt(key, "InterfaceLayout", -1);
    storeInt(key, "InterfaceWidth", 16001);
    Settings sizes(key, {.sizeCount = 3});
    SettingsFileReader reader(key);
    sizes.serialize(reader);
    CHECK(sizes.interfaceLayout == 0);
    Settings resizable(key, {.isResizable = true, .leastWidth = 600});
    resizable.serialize(reader);
    CHECK(resizable.interfaceLayout == -1);
    CHECK(resizable.interfaceWidth == 16000);
}

}  // namespace
}  // namespace cinder::test
