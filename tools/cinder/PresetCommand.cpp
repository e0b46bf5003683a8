#include "cinder/PresetCommand.h"

#include "cinder/FormatOptions.h"
#include "cinder/StandardStreams.h"
#include "cinder/UsageError.h"
#include "cinder/presets/PresetFile.h"
#include "cinder/vocabulary/Listing.h"
#include "params/tree/StandaloneParameters.h"
#include "presets/format/ParameterText.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

namespace cinder {

namespace {

using Path = std::filesystem::path;

struct TwoFiles {
    Path first, second;
};

void print(const std::string& text) {
    std::cout << text;
    requirePrinted();
}

/// What can be read again as a text, and says first what it was.
void show(const Path& path) {
    const StandaloneParameters tree;
    const PresetFile file = readPresetFile(path, tree);
    const std::string text = writePresetText(file.head, file.values, tree);
    print("# " + file.remark + '\n' +
          (text.empty() ? "# all parameters at their defaults\n" : text));
}

/// Two values that read alike are told apart by all their digits.
std::vector<std::string> differenceRow(const AbstractPluginParameter& parameter, float first,
                                       float second) {
    std::string firstText = parameter.text(first), secondText = parameter.text(second);
    if (firstText == secondText) {
        firstText = exactText(parameter, first);
        secondText = exactText(parameter, second);
    }
    return {parameter.getName(), firstText, secondText};
}

void showDifference(const TwoFiles& paths, ListFormat format) {
    const StandaloneParameters tree;
    const PresetFile first = readPresetFile(paths.first, tree);
    const PresetFile second = readPresetFile(paths.second, tree);
    if (first.component != second.component && !first.isText && !second.isText)
        throw UsageError("cannot compare " + quoted(paths.first) + " with " + quoted(paths.second) +
                         ": they cover different parameters");
    Listing listing{{{"parameter"}, {paths.first.string()}, {paths.second.string()}}, {}};
    for (int id = 0; id < tree.parameterCount(); ++id) {
        const auto at = static_cast<std::size_t>(id);
        if (first.values[at] != second.values[at])
            listing.rows.push_back(
                differenceRow(*tree.parameter(id), first.values[at], second.values[at]));
    }
    const bool isEmpty = listing.rows.empty() && format == ListFormat::Table;
    print(isEmpty ? "no difference\n" : textOf(listing, format));
}

void convert(const TwoFiles& paths) {
    const StandaloneParameters tree;
    writePresetFile(paths.second, readPresetFile(paths.first, tree), tree);
    print("Wrote " + quoted(paths.second) + '\n');
}

void addFile(CLI::App& command, const char* name, Path& path, const char* description) {
    command.add_option(name, path, description)->type_name("")->required();
}

constexpr const char* footerText =
    R"(A preset is a .knp file, of any version; a component preset ends in .band, .xlfo,
.eg, .ef or .midi; what ends in .txt is a text; any other file may be a preset or
the state of an instance. A text has fields, Intent, Tags, Format, Loudness and
Audio, and then a NAME = VALUE for each parameter that isn't at its default:

  Intent: Glues a drum bus and leaves its attacks alone.
  Band 1 Style = Warm Tube
  Band 1 Drive = 45%

A component's text has the names of Band 1, XLFO 1, EG 1, EF 1 or MIDI Source 1.
A value that no text can say to the last bit reads "stored" and a number.

Examples:
  cinder preset show "Warm Drums.knp" > drums.txt
  cinder preset diff old.knp new.knp
  cinder preset convert drums.txt drums.knp
  cinder preset convert old.knp new.knp
      from version 1, 2 or 3 to the present one)";

}  // namespace

void addPresetCommand(CLI::App& program) {
    CLI::App* const command =
        program.add_subcommand("preset", "Show, compare and convert preset files");
    command->require_subcommand(1);
    command->footer(footerText);

    CLI::App* const showing = command->add_subcommand("show", "Print what differs from default");
    const auto shown = std::make_shared<Path>();
    addFile(*showing, "FILE", *shown, "Preset, component preset, state or text");
    showing->callback([shown] { show(*shown); });

    CLI::App* const diff = command->add_subcommand("diff", "List the parameters that differ");
    const auto compared = std::make_shared<TwoFiles>();
    addFile(*diff, "A", compared->first, "A file as for `show`");
    addFile(*diff, "B", compared->second, "Another one");
    const auto format = addFormatOptions(*diff);
    diff->callback([compared, format] { showDifference(*compared, format->format()); });

    CLI::App* const conversion =
        command->add_subcommand("convert", "Write a file in the format of another ending");
    const auto converted = std::make_shared<TwoFiles>();
    addFile(*conversion, "IN", converted->first, "A file as for `show`");
    addFile(*conversion, "OUT", converted->second,
            "The file to write, .knp, .txt or as a component preset; may be IN");
    conversion->callback([converted] { convert(*converted); });
}

}  // namespace cinder
