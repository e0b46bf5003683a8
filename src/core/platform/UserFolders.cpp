#include "core/platform/UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <vector>

namespace cinder::platform {
namespace {

using Path = std::filesystem::path;

Path absoluteFromEnvironment(const char* name) {
    const char* const value = std::getenv(name);
    const Path path(value ? value : "");
    return path.is_absolute() ? path : Path();
}

Path fromEnvironmentOrHome(const char* name, const char* belowHome) {
    Path configured = absoluteFromEnvironment(name);
    if (!configured.empty()) return configured;
    const Path home = homeFolder();
    return home.empty() ? Path() : home / belowHome;
}

}  // namespace

Path homeFolder() {
    Path home = absoluteFromEnvironment("HOME");
    if (!home.empty()) return home;
    passwd entry{};
    passwd* found = nullptr;
    std::vector<char> texts(std::size_t{1} << 14);
    ::getpwuid_r(::getuid(), &entry, texts.data(), texts.size(), &found);
    const Path path(found && found->pw_dir ? found->pw_dir : "");
    return path.is_absolute() ? path : Path();
}

Path configFolder() {
    return fromEnvironmentOrHome("XDG_CONFIG_HOME", ".config");
}

Path dataFolder() {
    return fromEnvironmentOrHome("XDG_DATA_HOME", ".local/share");
}

}  // namespace cinder::platform
