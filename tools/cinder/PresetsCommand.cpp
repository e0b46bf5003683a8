#include "cinder/PresetsCommand.h"

#include "cinder/FormatOptions.h"
#include "cinder/OptionValues.h"
#include "cinder/StandardStreams.h"
#include "cinder/UsageError.h"
#include "plugin/CinderPlugin.h"
#include "presets/PresetManager.h"
#include "presets/files/Paths.h"
#include "presets/format/ComponentKind.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace cinder {

namespace {

constexpr std::string_view wholeKind = "preset";

/// As typed.
struct PresetsOptions {
    std::string folder;  // empty: where the plug-in looks
    std::string kind = std::string(wholeKind);
    std::shared_ptr<FormatOptions> format;
};

/// Of a component, or `wholePresets`.
constexpr int wholePresets = -1;
int parseKind(const std::string& text) {
    if (isSameName(wholeKind, text)) return wholePresets;
    std::string names(wholeKind);
    const auto kinds = componentKinds();
    for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
        const std::string name(kinds[kind].extension.substr(1));
        if (isSameName(name, text)) return static_cast<int>(kind);
        names += ", " + name;
    }
    throw UsageError("--kind takes one of " + names + ", not " +
                     quoted(std::filesystem::path(text)));
}

std::string pathOf(const std::filesystem::path& typed) {
    std::error_code failed;
    const auto folder = std::filesystem::canonical(typed, failed);
    if (failed || !std::filesystem::is_directory(folder))
        throw UserError("there is no folder " + quoted(typed));
    return systemPath(folder);
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

void print(const PresetManager& manager, bool withPrograms, ListFormat format) {
    std::cout << (format == ListFormat::Table ? treeOf(manager, withPrograms)
                                              : textOf(listingOf(manager, withPrograms), format));
    requirePrinted();
    if (manager.isCutShort())
        throw UserError(
            "the folder takes longer to read than a plug-in waits for it; there may "
            "be more in it than is listed");
}

/// A folder that is named is only looked at. Where the plug-in looks, it itself says, and as it
/// starts it puts the factory presets where there are none.
void runPresets(const PresetsOptions& options) {
    const int kind = parseKind(options.kind);
    const bool withPrograms = kind == wholePresets;
    const ListFormat format = options.format->format();
    if (options.folder.empty()) {
        CinderPlugin plugin(stereoLayout);
        PresetManager& manager = *plugin.presetManager(kind);
        manager.rescan(manager.getPath());
        return print(manager, withPrograms, format);
    }
    PresetManager manager(
        "", withPrograms ? std::string(".knp")
                         : std::string(componentKinds()[static_cast<std::size_t>(kind)].extension));
    manager.rescan(pathOf(options.folder));
    print(manager, withPrograms, format);
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
