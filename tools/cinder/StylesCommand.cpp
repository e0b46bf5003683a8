#include "cinder/StylesCommand.h"

#include "cinder/OptionValues.h"
#include "cinder/StandardStreams.h"
#include "cinder/TextTable.h"
#include "cinder/UsageError.h"
#include "cinder/measure/StyleTable.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace cinder {

namespace {

constexpr int lowestRate = 44100;  // with 20 kHz in the band
constexpr int highestRate = 384000;
constexpr double lowestLevelDb = -100.0;
constexpr double highestLevelDb = 24.0;

/// As typed.
struct StylesOptions {
    std::vector<std::string> styles;  // none: all
    std::string rate = "48000";
    std::string level = "-12";
    bool markdown = false;
};

StyleId parseStyle(const std::string& text) {
    std::string names;
    for (const StyleRecipe& recipe : styleRecipes) {
        if (isSameName(recipe.name, text)) return recipe.id;
        names += (names.empty() ? "" : ", ") + std::string(recipe.name);
    }
    throw UsageError("there is no style " + quoted(std::filesystem::path(text)) + "; there are " +
                     names);
}

double parseLevel(const std::string& text) {
    const auto level = parseNumber(text);
    if (level && *level >= lowestLevelDb && *level <= highestLevelDb) return *level;
    throw UsageError("--level takes a number of dBFS from -100 to 24, not " +
                     quoted(std::filesystem::path(text)));
}

/// What, which and unit, in rows of their own; what is said once for columns side by side.
void addHeadTo(TextTable& table) {
    std::vector<std::string> rows[3] = {{"style"}, {""}, {""}};
    const char* before = "";
    for (const StyleColumn& column : styleColumns()) {
        rows[0].push_back(std::string_view(before) == column.what ? "" : column.what);
        rows[1].push_back(column.which);
        rows[2].push_back(column.unit);
        before = column.what;
    }
    for (auto& row : rows)
        table.addRow(row);
}

/// Row by row, since all of them take seconds.
void printMarkdown(const StyleSet& styles, const std::vector<StyleId>& chosen,
                   const StyleMeasurement& measurement) {
    std::cout << styleMarkdownHead();
    for (const StyleId style : chosen) {
        std::cout << styleMarkdownRow(
            styleCells(style, measureStyle(styles, style, measurement),
                       measureStyleCost(styles, style, measurement.sampleRate)));
        requirePrinted();
    }
}

void printText(const StyleSet& styles, const std::vector<StyleId>& chosen,
               const StyleMeasurement& measurement) {
    TextTable table("l" + std::string(styleColumns().size(), 'r'));
    addHeadTo(table);
    for (const StyleId style : chosen)
        table.addRow(styleCells(style, measureStyle(styles, style, measurement),
                                measureStyleCost(styles, style, measurement.sampleRate)));
    std::cout << table.text();
    requirePrinted();
}

void runStyles(const StylesOptions& options) {
    const StyleMeasurement measurement = {
        parseWhole("--rate", options.rate, lowestRate, highestRate), parseLevel(options.level)};
    std::vector<StyleId> chosen;
    for (const std::string& name : options.styles)
        chosen.push_back(parseStyle(name));
    if (chosen.empty())
        for (const StyleRecipe& recipe : styleRecipes)
            chosen.push_back(recipe.id);
    const StyleSet styles;
    (options.markdown ? printMarkdown : printText)(styles, chosen, measurement);
}

constexpr const char* footer =
    R"(Plays a sine of 997 Hz through the distortion and the cabinet of one channel, at
8 times the rate (as far as the rate allows), and looks at one second of it, two
seconds after it began. Drives are 0, 50 and 100 %.

  THD    RMS of harmonics 2 to 20 against that of 1 to 20: 0 % is the sine alone,
         100 % has nothing left of it
  even   the even ones of them, likewise
  alias  a sine of 5 kHz at full drive: power off its harmonics against power on
         them, below 20 kHz, at the rate itself and at 8 times the rate
  level  RMS without DC, against drive 0
  DC     mean; none is below -150 dBFS
  noise  RMS of the style's own noise at full drive, under the tone (loud) and
         under one 48 dB lower (quiet)
  cost   time for a sample at half drive, in copies of one by memcpy in blocks of
         256, at the rate and at 8 times the rate; the one column that differs
         from machine to machine and from run to run

docs/styles.md tells more, and holds the table that --markdown prints.

Examples:
  cinder styles
  cinder styles --style "Warm Tube" --style warm-tape --level -24
      two of them, with a softer tone

Ends with 0 when done, 2 for a command that makes no sense.)";

}  // namespace

void addStylesCommand(CLI::App& program) {
    const auto options = std::make_shared<StylesOptions>();
    CLI::App* const command = program.add_subcommand("styles", "Measure what the styles do");
    command->add_option("--style", options->styles, "One style by its name; may be given again")
        ->type_name("NAME")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command->add_option("--rate", options->rate, "Sample rate, 44100 to 384000")
        ->type_name("HZ")
        ->capture_default_str();
    command->add_option("--level", options->level, "Peak of the sine, -100 to 24")
        ->type_name("DBFS")
        ->capture_default_str();
    command->add_flag("--markdown", options->markdown, "As the table in docs/styles.md");
    command->footer(footer);
    command->callback([options] { runStyles(*options); });
}

}  // namespace cinder
