#include "cinder/render/RenderStart.h"

#include "cinder/audio/UserError.h"
#include "cinder/presets/PresetFile.h"
#include "cinder/render/RenderSettings.h"
#include "cinder/render/TextFile.h"
#include "core/platform/WholeFile.h"
#include "host/DirectPluginAdapter.h"
#include "presets/PresetManager.h"
#include "presets/files/Paths.h"
#include "presets/format/PresetConversion.h"
#include "state/MemoryStream.h"

#include <sstream>

namespace cinder {

namespace {

using Path = std::filesystem::path;

void setAll(CinderPlugin& plugin, const std::vector<float>& values) {
    plugin.beginUpdate();
    for (int id = 0; id < plugin.parameterCount(); ++id)
        plugin.parameter(id)->setValue(values.at(static_cast<std::size_t>(id)), 0);
    plugin.requestHostRefresh();
    plugin.endUpdate();
}

std::vector<float> valuesOf(const GenericParameterOwner& owner) {
    std::vector<float> values;
    for (int id = 0; id < owner.parameterCount(); ++id)
        values.push_back(owner.parameter(id)->value());
    return values;
}

/// A path, rather than the name of a preset in the folder.
bool isFile(const std::string& typed) {
    std::error_code ignored;
    return typed.find('/') != std::string::npos || typed.ends_with(".knp") ||
           typed.ends_with(".txt") || std::filesystem::is_regular_file(typed, ignored);
}

/// The plug-in would take what it can get of a file that is damaged; here it is looked at first.
void loadFile(CinderPlugin& plugin, const Path& path, const RenderSettings& settings) {
    const PresetFile file = readPresetFile(path, settings.getTree());
    if (file.component || file.isState)
        throw UserError(quoted(path) + " is " + file.remark + ", not a preset");
    const auto entry = PresetEntry::of(systemPath(std::filesystem::absolute(path)));
    if (file.isText) {
        setAll(plugin, file.values);
        plugin.getCurrentPreset().assign({entry.name, "", false});
    } else if (!plugin.loadPreset(entry)) {
        throw UserError("cannot load " + quoted(path));
    }
}

void loadNamed(CinderPlugin& plugin, const std::string& name, const RenderSettings& settings) {
    const PresetEntry* const entry = plugin.presetManager(-1)->findAtRootFirst(name);
    if (!entry)
        throw UserError("there is no preset " + quoted(Path(name)) +
                        "; `cinder presets` lists those there are");
    loadFile(plugin, nativePath(entry->path), settings);
}

void loadState(DirectPluginAdapter& instance, const Path& path, const RenderSettings& settings) {
    const PresetFile file = readPresetFile(path, settings.getTree());
    if (!file.isState)
        throw UserError(quoted(path) + " is " + file.remark + ", not the state of an instance");
    const std::string bytes = readWhole(path);
    MemoryStream stream(bytes);
    if (!instance.readState(stream)) throw UserError("cannot load " + quoted(path));
}

}  // namespace

std::vector<float> RenderStart::load(DirectPluginAdapter& instance,
                                     const RenderSettings& settings) const {
    CinderPlugin& plugin = instance.getPlugin();
    setAll(plugin, defaultValues(plugin));
    plugin.getCurrentPreset().assign({});
    if (preset && isFile(*preset))
        loadFile(plugin, *preset, settings);
    else if (preset)
        loadNamed(plugin, *preset, settings);
    if (state) loadState(instance, *state, settings);
    return valuesOf(plugin);
}

RenderSnapshot::RenderSnapshot(const DirectPluginAdapter& instance, const RenderSettings& settings)
    : settings(settings), values(valuesOf(instance.getPlugin())) {
    std::ostringstream stream;
    instance.writeState(stream);
    state = std::move(stream).str();
}

void RenderSnapshot::save(const RenderStart::Saved& files) const {
    if (files.preset) {
        PresetFile file;
        file.values = values;
        writePresetFile(*files.preset, file, settings.getTree());
    }
    if (files.state && !platform::writeWholeFile(*files.state, state))
        throw UserError("cannot write " + quoted(*files.state));
}

}  // namespace cinder
