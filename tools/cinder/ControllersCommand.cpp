#include "cinder/ControllersCommand.h"

#include "cinder/FormatOptions.h"
#include "cinder/OptionValues.h"
#include "cinder/StandardStreams.h"
#include "cinder/UsageError.h"
#include "cinder/vocabulary/Listing.h"
#include "cinder/vocabulary/ParameterList.h"
#include "midi/ControllerMapFile.h"
#include "midi/ControllerMapping.h"
#include "params/tree/StandaloneParameters.h"
#include "presets/files/Paths.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

namespace cinder {

namespace {

using Path = std::filesystem::path;

struct ControllerOptions {
    Path file;  // empty: that of the user
    std::string controller, parameter;
};

void print(const std::string& text) {
    std::cout << text;
    requirePrinted();
}

/// Where the plug-in keeps it.
Path usersFile() {
    const std::string folder = applicationDataFolder(versionedName("Cinder", 1));
    if (folder.empty()) throw UsageError("there is no home folder; --file says where the map is");
    return nativePath(folder) / controllerMapFileName;
}

/// The map of a file that the plug-in would read. The user's own one may be missing.
void read(const Path& path, bool mayBeMissing, ControllerMapping& mapping) {
    if (readControllerMapFile(path, mapping)) return;
    std::error_code failed;
    if (mayBeMissing && !std::filesystem::exists(path, failed) && !failed) return;
    throw UserError("cannot read " + quoted(path) + ", or it is no controller map");
}

std::string targetText(std::int32_t target, const StandaloneParameters& tree) {
    const AbstractPluginParameter* const parameter = tree.parameter(target);
    return parameter ? parameter->getName() : "a parameter that is not there";
}

void show(const ControllerOptions& options, ListFormat format) {
    const bool isUsers = options.file.empty();
    ControllerMapping mapping;
    read(isUsers ? usersFile() : options.file, isUsers, mapping);
    const StandaloneParameters tree;
    Listing listing{{{"controller", true}, {"id", true}, {"parameter"}}, {}};
    for (int number = 0; number < ControllerMapping::numControllers; ++number) {
        const std::int32_t target = mapping.targetOf(number);
        if (target == ControllerMapping::none) continue;
        listing.rows.push_back(
            {std::to_string(number), std::to_string(target), targetText(target, tree)});
    }
    const bool isEmpty = listing.rows.empty() && format == ListFormat::Table;
    print(isEmpty ? "no controller moves a parameter\n" : textOf(listing, format));
}

void write(const Path& path, const ControllerMapping& mapping) {
    if (!writeControllerMapFile(path, mapping)) throw UserError("cannot write " + quoted(path));
    print("Wrote " + quoted(path) + '\n');
}

/// Reads the map, lets `edit` change it, and writes it back.
template <typename Edit>
void change(const ControllerOptions& options, bool mayBeMissing, Edit edit) {
    const Path path = options.file.empty() ? usersFile() : options.file;
    ControllerMapping mapping;
    read(path, mayBeMissing, mapping);
    edit(mapping);
    write(path, mapping);
}

int controllerNumber(const std::string& text) {
    return parseWhole("CONTROLLER", text, 0, ControllerMapping::numControllers - 1);
}

void set(const ControllerOptions& options) {
    const StandaloneParameters tree;
    const int number = controllerNumber(options.controller);
    const int id = findParameter(tree, options.parameter).getId();
    change(options, true, [=](ControllerMapping& mapping) { mapping.assign(number, id); });
}

/// The user's own map may be damaged; a file that is named must be a map.
void clearAll(const ControllerOptions& options) {
    const bool isUsers = options.file.empty();
    const Path path = isUsers ? usersFile() : options.file;
    ControllerMapping mapping;
    if (!isUsers) read(path, false, mapping);
    mapping.clear();
    write(path, mapping);
}

void clear(const ControllerOptions& options) {
    if (options.controller.empty()) return clearAll(options);
    const int number = controllerNumber(options.controller);
    change(options, options.file.empty(),
           [=](ControllerMapping& mapping) { mapping.assign(number, ControllerMapping::none); });
}

void addFileOption(CLI::App& command, ControllerOptions& options) {
    command.add_option("--file", options.file, "The map's file; else the one that Cinder reads")
        ->type_name("FILE");
}

constexpr const char* footerText =
    R"(Which parameter each MIDI controller moves, from 0 to 127. A plug-in that runs
reads the file when it starts, or by Revert in its MIDI menu.

Examples:
  cinder controllers show
  cinder controllers set 74 "Band 1 Drive"
      which takes the parameter away from the controller that had it
  cinder controllers clear 74
  cinder controllers clear --file MidiControllerMap.knm)";

}  // namespace

void addControllersCommand(CLI::App& program) {
    CLI::App* const command =
        program.add_subcommand("controllers", "Show or change what MIDI controllers move");
    const auto options = std::make_shared<ControllerOptions>();
    command->require_subcommand(1);
    command->footer(footerText);

    CLI::App* const showing = command->add_subcommand("show", "List the controllers in use");
    addFileOption(*showing, *options);
    const auto format = addFormatOptions(*showing);
    showing->callback([options, format] { show(*options, format->format()); });

    CLI::App* const setting = command->add_subcommand("set", "Let a controller move a parameter");
    setting->add_option("CONTROLLER", options->controller, "Its number, 0 to 127")
        ->type_name("")
        ->required();
    setting->add_option("NAME", options->parameter, "A parameter's name, or its id")
        ->type_name("")
        ->required();
    addFileOption(*setting, *options);
    setting->callback([options] { set(*options); });

    CLI::App* const clearing = command->add_subcommand("clear", "Let controllers move nothing");
    clearing->add_option("CONTROLLER", options->controller, "The one; else all")->type_name("");
    addFileOption(*clearing, *options);
    clearing->callback([options] { clear(*options); });
}

}  // namespace cinder
