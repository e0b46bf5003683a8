#include <doctest/doctest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "midi/ControllerMapFile.h"
#include "midi/ControllerMapping.h"
#include "params/AbstractPluginParameter.h"
#include "params/tree/StandaloneParameters.h"
#include "plugin/settings/SettingsFile.h"
#include "presets/PresetFiles.h"
#include "presets/files/Paths.h"
#include "presets/format/PresetContent.h"
#include "state/BinaryFile.h"
#include "state/chunks/InstanceState.h"
#include "state/chunks/ParameterState.h"
#include "state/chunks/StateContent.h"
#include "support/Rng.h"
#include "support/TemporaryFolder.h"

namespace cinder::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* code = "KCnd";

/// A file that is written again and again, each time with the other one of two contents.
struct Victim {
    std::string name;
    std::function<bool(int content)> write;
    /// Which of the two the file holds, whole; -1 for anything else.
    std::function<int()> held;
};

Victim controllerMap(const fs::path& folder) {
    const fs::path path = folder / controllerMapFileName;
    return {"controller map",
            [=](int content) {
                ControllerMapping mapping;
                for (int number = 0; number < ControllerMapping::numControllers; ++number)
                    mapping.set(number, content);
                return writeControllerMapFile(path, mapping);
            },
            [=] {
                ControllerMapping mapping;
                if (!readControllerMapFile(path, mapping)) return -1;
                const int first = mapping.targetOf(0);
                for (int number = 1; number < ControllerMapping::numControllers; ++number)
                    if (mapping.targetOf(number) != first) return -1;
                return first;
            }};
}

/// What parameter `id` has in one of the two contents.
float valueIn(int content, const GenericParameterOwner& tree, int id) {
    const AbstractPluginParameter& parameter = *tree.parameter(id);
    return content == 0 ? parameter.minimum() : parameter.maximum();
}

void setAll(int content, GenericParameterOwner& tree) {
    for (int id = 0; id < tree.parameterCount(); ++id)
        tree.parameter(id)->storeValue(valueIn(content, tree, id));
}

Victim state(const fs::path& folder) {
    const fs::path path = folder / "state";
    const InstanceState instances[] = {{"Clean", 1, true, "A"}, {"A longer name", 2, false, "B"}};
    return {"state",
            [=](int content) {
                StandaloneParameters tree;
                setAll(content, tree);
                BinaryFileWriter writer(path);
                return writeParameterState(writer.getStream(), tree) &&
                       writeInstanceState(writer.getStream(), code, instances[content]) &&
                       writeBypassState(writer.getStream(), content == 1) && writer.commit();
            },
            [=] {
                const StandaloneParameters tree;
                BinaryFileReader reader(path);
                const auto read = readStateContent(reader.getStream(), code, 899);
                if (!read || !read->isBypassed) return -1;
                const int content = *read->isBypassed;
                for (int id = 0; id < tree.parameterCount(); ++id)
                    if (read->values[static_cast<std::size_t>(id)] != valueIn(content, tree, id))
                        return -1;
                return read->instance == instances[content] ? content : -1;
            }};
}

Victim preset(const fs::path& folder) {
    const std::string path = systemPath(folder / "Preset.knp");
    return {"preset",
            [=](int content) {
                StandaloneParameters tree;
                setAll(content, tree);
                ParameterCollection all;
                for (int id = 0; id < tree.parameterCount(); ++id)
                    all.parameters.push_back(tree.parameter(id));
                return saveCollection(all, path, code, presetVersion);
            },
            [=] {
                StandaloneParameters tree;
                if (!loadPresetFile(tree, path, code, presetVersion)) return -1;
                const int content = tree.parameter(0)->value() != valueIn(0, tree, 0);
                for (int id = 0; id < tree.parameterCount(); ++id)
                    if (tree.parameter(id)->value() != valueIn(content, tree, id)) return -1;
                return content;
            }};
}

Victim settings(const SettingsKey& key) {
    const auto folderOf = [](int content) {
        return std::string(content == 0 ? 20000 : 10000, '\\');
    };
    return {"settings",
            [=](int content) {
                SettingsFileWriter writer(key);
                writer.intValue("first", content, 0);
                writer.stringValue("PresetFolder", folderOf(content), "");
                writer.intValue("last", content, 0);
                return writer.commit();
            },
            [=] {
                SettingsFileReader reader(key);
                const int content = reader.intValue("first", 0, -1);
                const bool isWhole =
                    reader.intValue("last", 0, -2) == content &&
                    reader.stringValue("PresetFolder", "", "") == folderOf(content);
                return isWhole ? content : -1;
            }};
}

TEST_CASE("Writers killed a thousand times at any moment leave the old file or the new one") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const TemporaryFolder folder;
    const SettingsKey key{folder / "config", R"(Software\Kestrelon\Cinder\1.0)"};
    const std::vector<Victim> victims = {controllerMap(folder.path), state(folder.path),
                                         preset(folder.path), settings(key)};
    for (const Victim& victim : victims)
        REQUIRE(victim.write(0));
    int numHeld[2] = {};
    for (int round = 0; round < 1000; ++round) {
        const Victim& victim = victims[static_cast<std::size_t>(round) % victims.size()];
        const int before = victim.held();
        const pid_t writer = ::fork();
        REQUIRE(writer >= 0);
        if (writer == 0) {
            for (int content = 1 - before; victim.write(content); content = 1 - content) {
            }
            ::_exit(1);
        }
        ::usleep(static_cast<useconds_t>(rng.integer(0, 4000)));
        ::kill(writer, SIGKILL);
        int status = 0;
        REQUIRE(::waitpid(writer, &status, 0) == writer);
        REQUIRE(WIFSIGNALED(status));  // it was still writing
        const int after = victim.held();
        INFO(victim.name << ", round " << round);
        REQUIRE(after >= 0);
        ++numHeld[after];
    }
    // The kills came at different times: often enough behind the first rename, and before it.
    CHECK(std::min(numHeld[0], numHeld[1]) > 100);

    // The lock of the settings died with its holder, and the next writer sweeps up.
    CHECK(victims.back().write(1 - victims.back().held()));
    const auto isLeftOver = [](const fs::directory_entry& entry) {
        return entry.path().extension() == ".part";
    };
    CHECK(std::ranges::none_of(fs::directory_iterator(key.file().parent_path()), isLeftOver));
}

}  // namespace
}  // namespace cinder::test
