#include "cinder/BenchCommand.h"

#include "cinder/OptionValues.h"
#include "cinder/StandardStreams.h"
#include "cinder/TextTable.h"
#include "cinder/UsageError.h"
#include "cinder/bench/BenchCost.h"
#include "cinder/bench/ProductRun.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace cinder {

namespace {

constexpr int longestBlock = 65536;
constexpr int mostFrames = 1000000000;
constexpr double mostSeconds = 60.0;
constexpr int highestSeed = 1000000;

/// As typed.
struct BenchOptions {
    std::string filter;
    std::string seconds = "0.2";
    std::string block = "512";
    std::string row, frames, automate;
    bool json = false;
    bool list = false;
};

std::string inLowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

double parseSeconds(const std::string& text) {
    const auto seconds = parseNumber(text);
    if (seconds && *seconds > 0.0 && *seconds <= mostSeconds) return *seconds;
    throw UsageError("--seconds takes a number above 0, up to 60, not " +
                     quoted(std::filesystem::path(text)));
}

std::vector<BenchRow> chosenRows(const std::string& filter) {
    std::vector<BenchRow> rows = benchRows();
    const std::string wanted = inLowerCase(filter);
    std::erase_if(rows, [&](const BenchRow& row) {
        return inLowerCase(row.group + ": " + row.name).find(wanted) == std::string::npos;
    });
    if (!rows.empty()) return rows;
    throw UsageError("--filter: no row has " + quoted(std::filesystem::path(filter)) +
                     " in its name; `cinder bench --list` prints them");
}

std::string fixed(double value, int places) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(places) << value;
    return text.str();
}

void printTable(const std::vector<BenchRow>& rows, int blockSize, double seconds) {
    TextTable table("llrrr");
    table.addRow({"group", "row", "ns a frame", "x memcpy", "% of a core"});
    for (const BenchRow& row : rows) {
        const BenchCost cost = measureBenchCost(row, blockSize, seconds);
        table.addRow({row.group, row.name, fixed(cost.nsPerFrame, 1), fixed(cost.copies, 1),
                      fixed(cost.shareOfCore * 100.0, 2)});
    }
    std::cout << table.text();
}

void printJson(const std::vector<BenchRow>& rows, int blockSize, double seconds) {
    auto list = nlohmann::ordered_json::array();
    for (const BenchRow& row : rows) {
        const BenchCost cost = measureBenchCost(row, blockSize, seconds);
        list.push_back({{"group", row.group},
                        {"row", row.name},
                        {"nsPerFrame", cost.nsPerFrame},
                        {"timesMemcpy", cost.copies},
                        {"shareOfCore", cost.shareOfCore}});
    }
    std::cout << list.dump(2) << '\n';
}

/// One row and nothing else.
void playFrames(const std::string& name, int numFrames, int blockSize, const std::string& seed) {
    for (const BenchRow& row : benchRows()) {
        if (!isSameName(row.name, name)) continue;
        ProductRun run(row, blockSize);
        run.settle();
        if (!seed.empty())
            run.automate(
                static_cast<std::uint32_t>(parseWhole("--automate", seed, 1, highestSeed)));
        for (int played = 0; played < numFrames; played += blockSize)
            run.playBlock();
        return;
    }
    throw UsageError("--row: there is no row " + quoted(std::filesystem::path(name)) +
                     "; `cinder bench --list` prints them");
}

void runBench(const BenchOptions& options) {
    const int blockSize = parseWhole("--block", options.block, 1, longestBlock);
    if (options.row.empty() != options.frames.empty())
        throw UsageError("--row and --frames go together");
    if (!options.row.empty())
        return playFrames(options.row, parseWhole("--frames", options.frames, 1, mostFrames),
                          blockSize, options.automate);
    if (!options.automate.empty()) throw UsageError("--automate goes with --row");
    const double seconds = parseSeconds(options.seconds);
    const std::vector<BenchRow> rows = chosenRows(options.filter);
    if (options.list)
        for (const BenchRow& row : rows)
            std::cout << row.group << ": " << row.name << '\n';
    else
        (options.json ? printJson : printTable)(rows, blockSize, seconds);
    requirePrinted();
}

constexpr const char* footer =
    R"(Plays chords and noise through the whole product in stereo at 48 kHz, in one state
after the other, in turns with a memcpy of 256 floats that lie in the cache:

  ns a frame   median time for a stereo frame
  x memcpy     median of the ratios: 256 frames to one memcpy; the column to
               compare between machines
  % of a core  what playing in real time takes of one

Where a row names only a number of bands, each has a style of another kind at half
drive. Slots are moved by XLFOs that glide and by envelope followers.

Examples:
  cinder bench
  cinder bench --filter "6 bands" --seconds 1
  cinder bench --filter styles --json > styles.json
  cinder bench --row "6 bands, HQ" --frames 96000
      plays and prints nothing, for a profiler

Ends with 0 when done, 2 for a command that makes no sense.)";

}  // namespace

void addBenchCommand(CLI::App& program) {
    const auto options = std::make_shared<BenchOptions>();
    CLI::App* const command = program.add_subcommand("bench", "Measure what the product costs");
    command->add_option("--filter", options->filter, "Only rows with this in group or name")
        ->type_name("TEXT");
    command->add_option("--seconds", options->seconds, "Time for a row, up to 60")
        ->type_name("S")
        ->capture_default_str();
    command->add_option("--block", options->block, "Frames in a block, 1 to 65536")
        ->type_name("N")
        ->capture_default_str();
    command->add_flag("--json", options->json, "A list of objects");
    command->add_flag("--list", options->list, "Print the rows and measure nothing");
    command->add_option("--row", options->row, "Play this row and print nothing")
        ->type_name("NAME");
    command->add_option("--frames", options->frames, "How long to play it")->type_name("N");
    command
        ->add_option("--automate", options->automate, "With --row: random values before each block")
        ->type_name("SEED");
    command->footer(footer);
    command->callback([options] { runBench(*options); });
}

}  // namespace cinder
