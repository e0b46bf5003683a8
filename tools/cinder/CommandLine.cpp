#include "cinder/CommandLine.h"

#include "cinder/ArchiveCommand.h"
#include "cinder/BenchCommand.h"
#include "cinder/ControllersCommand.h"
#include "cinder/PlotCommand.h"
#include "cinder/PresetCommand.h"
#include "cinder/PresetsCommand.h"
#include "cinder/RenderCommand.h"
#include "cinder/StylesCommand.h"
#include "cinder/UsageError.h"
#include "cinder/VocabularyCommands.h"
#include "cinder/audio/InterruptFlag.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

namespace cinder {

namespace {

/// Every command, in the order in which --help lists them.
// clang-format off
constexpr void (*addCommands[])(CLI::App&) = {
    addRenderCommand,
    addStylesCommand,
    addPlotCommand,
    addBenchCommand,
    addParamsCommand,
    addSourcesCommand,
    addTargetsCommand,
    addPresetsCommand,
    addPresetCommand,
    addArchiveCommand,
    addControllersCommand,
};
// clang-format on

constexpr const char* examples = R"(Examples:
  cinder render drums.wav out.wav
  cinder render drums.wav out.flac --set "Band 1 Drive=70%"
  cinder params

`cinder COMMAND --help` tells all about a command.)";

int complain(std::string text, int status) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    std::cerr << "cinder: " << text << '\n';
    return status;
}

void describeProgram(CLI::App& program) {
    program.name("cinder");
    program.description("Cinder, a multi-band saturation and distortion, on audio files.");
    program.footer(examples);
    program.set_version_flag("--version", std::string("cinder ") + CINDER_VERSION,
                             "Print the version and end");
    program.set_help_flag("-h,--help", "Print this help and end");
    program.get_formatter()->column_width(22);
    program.get_formatter()->label("REQUIRED", "");
    program.get_formatter()->label("SUBCOMMAND", "COMMAND ...");
    program.get_formatter()->label("Positionals", "Arguments");
    program.require_subcommand(1);
    for (const auto addCommand : addCommands)
        addCommand(program);
    for (CLI::App* const command : program.get_subcommands({}))
        command->group("Commands");
}

/// As it was typed, down to the last word that names one: "cinder plot style".
const CLI::App& lastCommand(const CLI::App& program, std::string& typed) {
    const CLI::App* command = &program;
    typed = program.get_name();
    while (!command->get_subcommands().empty()) {
        command = command->get_subcommands().back();
        typed += ' ' + command->get_name();
    }
    return *command;
}

bool isFamily(const CLI::App& command) {
    return !command.get_subcommands([](const CLI::App*) { return true; }).empty();
}

int complainOfParsing(const CLI::App& program, const CLI::ParseError& error) {
    std::string typed;
    const CLI::App& command = lastCommand(program, typed);
    const std::string help = "; `" + typed + " --help` ";
    if (isFamily(command) && command.remaining_size() > 0) {
        const std::string word = command.remaining().front();
        return complain((word.starts_with('-') ? "there is no option " : "there is no command ") +
                            quoted(std::filesystem::path(word)) + help + "lists what there is",
                        exitUsage);
    }
    return complain(error.what() + help + "tells more", exitUsage);
}

int parseAndRun(CLI::App& program, int argc, const char* const* argv) {
    try {
        program.parse(argc, argv);
        return exitSuccess;
    } catch (const CLI::Success& asked) {  // --help and --version
        return program.exit(asked);
    } catch (const CLI::ParseError& error) {
        return complainOfParsing(program, error);
    }
}

}  // namespace

int runCommandLine(int argc, const char* const* argv) {
    try {
        CLI::App program;
        describeProgram(program);
        return parseAndRun(program, argc, argv);
    } catch (const Interrupted& interrupted) {
        return complain("interrupted; no file was changed", interrupted.exitStatus());
    } catch (const UsageError& error) {
        return complain(error.what(), exitUsage);
    } catch (const std::exception& error) {
        return complain(error.what(), exitFailure);
    }
}

}  // namespace cinder
