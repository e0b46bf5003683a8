// What the product brings along for the user's folders.
#include "plugin/GenericPlugin.h"
#include "presets/archive/InstallArchive.h"
#include "presets/archive/SetupArchive.h"
#include "presets/resources/Resources.h"

namespace cinder {
namespace {

constexpr const char* factoryArchive = "WindowsSetupDocs";

}  // namespace

bool GenericPlugin::installFactoryFiles(bool overwrite) {
    const ScopedLock inside(instanceLock());
    const std::string presets = shared->presets.getPath();
    const std::string data = shared->dataFolder();
    if (!resourceExists(factoryArchive)) return false;
    if (!data.empty())
        extractArchiveFolder(openResource(factoryArchive), "ApplicationData", data, overwrite);
    bool installed = false;
    if (!presets.empty() && overwrite)
        installed =
            extractArchiveFolder(openResource(factoryArchive), "FactoryPresets", presets, true);
    else if (!presets.empty())
        installed = installArchiveFolder(openResource(factoryArchive), "FactoryPresets", presets);
    shared->rescanComponents();
    rescanPresets();
    return installed;
}

}  // namespace cinder
