#include "cinder/PresetsCommand.h"

#include "cinder/FormatOptions.h"
#include "cinder/OptionValues.h"
#include "cinder/StandardStreams.h"
#include "cinder/UsageError.h"
#include "plugin/settings/SettingsFile.h"
#include "presets/PresetManager.h"
#include "presets/files/Paths.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace cinder {

namespace {

constexpr const char* product = "Cinder";
constexpr int majorVersion = 1;

/// Presets of the whole, which have MIDI programs, and of each kind of part.
struct PresetKind {
    const char* name;
    const char* extension;
    const char* folder;  // below that of all component presets
};
constexpr PresetKind presetKinds[] = {
    {"preset", ".knp", ""}, {"band", ".band", "Band"}, {"xlfo", ".xlfo", "XLFO"},
    {"eg", ".eg", "EG"},    {"ef", ".ef", "EF"},       {"midi", ".midi", "MIDI"},
};

bool hasPrograms(const PresetKind& kind) {
    return &kind == &presetKinds[0];
}

/// As typed.
struct PresetsOptions {
    std::string folder;  // empty: where the plug-in looks
    std::string kind = presetKinds[0].name;
    std::shared_ptr<FormatOptions> format;
};

const PresetKind& parseKind(const std::string& text) {
    std::string names;
    for (const PresetKind& kind : presetKinds) {
        if (isSameName(kind.name, text)) return kind;
        names += (names.empty() ? "" : ", ") + std::string(kind.name);
    }
    throw UsageError("--kind takes one of " + names + ", not " +
                     quoted(std::filesystem::path(text)));
}

/// The folder of the settings, or the one that an instance falls back to.
std::string presetFolderOfUser() {
    const std::string fallback = defaultPresetFolder(versionedName(product, majorVersion));
    SettingsFileReader reader({userSettingsRoot(), registryKeyPath(product, majorVersion)});
    const std::string chosen = reader.stringValue("PresetFolder", fallback, fallback);
    return folderExists(chosen) ? chosen : fallback;
}

std::string folderOf(const std::filesystem::path& typed, const PresetKind& kind) {
    if (!typed.empty()) {
        const std::string folder = systemPath(std::filesystem::absolute(typed).lexically_normal());
        if (!folderExists(folder)) throw UserError("there is no folder " + quoted(typed));
        return folder;
    }
    if (hasPrograms(kind)) return presetFolderOfUser();
    return applicationDataFolder(versionedName(product, majorVersion)) + "Component Presets\\" +
           kind.folder;
}

std::string inOneLine(std::string text) {
    const auto isControl = [](char c) { return (c >= 0 && c < ' ') || c == '\x7f'; };
    std::replace_if(text.begin(), text.end(), isControl, '?');
    return text;
}

/// Slashes instead of backslashes. What stands for a byte stays, so that this is always UTF-8.
std::string shownPath(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

void appendTree(const PresetFolder& folder, bool withPrograms, const std::string& indent,
                std::string& out) {
    for (const auto& subfolder : folder.getSubfolders()) {
        out += indent + inOneLine(subfolder->getName()) + "/\n";
        appendTree(*subfolder, withPrograms, indent + "    ", out);
    }
    for (const auto& preset : folder.getPresets())
        out += indent + inOneLine(withPrograms ? preset->programLabel : preset->name) + '\n';
    if (folder.isEmpty()) out += indent + "(No Presets)\n";
}

std::string treeOf(const PresetManager& manager, bool withPrograms) {
    std::string text = inOneLine(shownPath(manager.getPath())) + '\n';
    appendTree(manager, withPrograms, "    ", text);
    return text;
}

/// The presets in the order of their numbers.
Listing listingOf(const PresetManager& manager, bool withPrograms) {
    Listing listing{{{"bank", true}, {"program", true}, {"name"}, {"folder"}, {"path"}}, {}};
    const auto number = [&](int n) { return withPrograms ? std::to_string(n) : std::string(); };
    std::vector<PresetEntry*> list;
    manager.allPresets(list);
    for (const PresetEntry* const entry : list) {
        const std::string below = entry->path.substr(manager.getPath().size());
        const std::size_t folderLength = below.rfind('\\') + 1;  // 0 where there is none
        listing.rows.push_back({number(entry->bank), number(entry->program), entry->name,
                                shownPath(below.substr(0, folderLength)), shownPath(entry->path)});
    }
    return listing;
}

void runPresets(const PresetsOptions& options) {
    const PresetKind& kind = parseKind(options.kind);
    PresetManager manager("", kind.extension);
    manager.rescan(folderOf(options.folder, kind));
    const ListFormat format = options.format->format();
    std::cout << (format == ListFormat::Table
                      ? treeOf(manager, hasPrograms(kind))
                      : textOf(listingOf(manager, hasPrograms(kind)), format));
    requirePrinted();
    if (manager.isCutShort())
        throw UserError(
            "the folder takes longer to read than a plug-in waits for it; there may "
            "be more in it than is listed");
}

constexpr const char* footer =
    R"(Folders and presets stand in the order of the plug-in's menu, each preset with
its (bank/program) as MIDI program changes count it. --csv and --json list the
presets alone, in the order of these numbers.

Examples:
  cinder presets
      the preset folder of the settings, or that of a new installation
  cinder presets --folder ~/Sounds --json
  cinder presets --kind band)";

}  // namespace

void addPresetsCommand(CLI::App& program) {
    CLI::App* const command = program.add_subcommand("presets", "List the presets of a folder");
    const auto options = std::make_shared<PresetsOptions>();
    command
        ->add_option("--folder", options->folder,
                     "The folder to list, instead of the one that the plug-in looks at")
        ->type_name("DIR");
    command
        ->add_option("--kind", options->kind,
                     "Presets of the whole or of a part: preset, band, xlfo, eg, ef, midi")
        ->type_name("KIND")
        ->capture_default_str();
    options->format = addFormatOptions(*command);
    command->footer(footer);
    command->callback([options] { runPresets(*options); });
}

}  // namespace cinder
