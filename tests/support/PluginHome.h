#pragma once

#include <stdlib.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/TemporaryFolder.h"

namespace cinder::test {

/// A home folder of its own for everything that reads the user's folders: settings in config,
/// application data in data, presets in documents. The environment is as before when it goes.
class PluginHome {
public:
    /// What an instance finds: nothing, as on its very first start, or a preset folder in use, with
    /// an empty folder "Own" in it, so that it unpacks no factory presets.
    enum class Start { InUse, New };

    explicit PluginHome(Start start = Start::InUse) {
        set("HOME", folder.path);
        set("XDG_CONFIG_HOME", folder / "config");
        set("XDG_DATA_HOME", folder / "data");
        set("XDG_CONFIG_DIRS", folder / "machine");
        std::filesystem::create_directories(folder / "config");
        if (start == Start::InUse) std::filesystem::create_directories(presets() / "Own");
        putBytes(folder / "config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/documents\"\n");
    }
    PluginHome(const PluginHome&) = delete;
    PluginHome& operator=(const PluginHome&) = delete;
    ~PluginHome() {
        for (const auto& [name, value] : before)
            if (value)
                ::setenv(name.c_str(), value->c_str(), 1);
            else
                ::unsetenv(name.c_str());
    }

    std::filesystem::path presets() const { return folder / "documents/Kestrelon/Cinder"; }
    std::filesystem::path data() const { return folder / "data/Kestrelon/Cinder"; }

    TemporaryFolder folder;

private:
    void set(const std::string& name, const std::filesystem::path& value) {
        const char* const old = ::getenv(name.c_str());
        before.emplace_back(name, old ? std::optional<std::string>(old) : std::nullopt);
        ::setenv(name.c_str(), value.c_str(), 1);
    }

    std::vector<std::pair<std::string, std::optional<std::string>>> before;
};

}  // namespace cinder::test
