#include "cinder/PlotCommand.h"

#include "cinder/OptionValues.h"
#include "cinder/UsageError.h"
#include "cinder/audio/InterruptFlag.h"
#include "cinder/plot/CabinetFigure.h"
#include "cinder/plot/CrossoverFigure.h"
#include "cinder/plot/FilterFigure.h"
#include "cinder/plot/Picture.h"
#include "cinder/plot/StyleFigure.h"
#include "cinder/plot/ToneFigure.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cinder {

namespace {

constexpr int lowestRate = 8000;
constexpr int highestRate = 384000;
constexpr int smallestSide = 480;
constexpr int largestSide = 8000;

/// What all kinds take, as typed.
struct PlotOptions {
    std::filesystem::path output;
    std::string rate = "48000";
    std::optional<std::string> size;
    std::string subject;  // a style, a cabinet
    std::optional<std::string> drive, level, bands, crossover, slope, shape, frequency, gain, q;
    bool withCabinet = false;

    int sampleRate() const { return parseWhole("--rate", rate, lowestRate, highestRate); }
};

std::vector<double> parseList(const char* option, const std::string& text, double minimum,
                              double maximum, std::size_t most) {
    std::vector<double> values;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(',', start), text.size());
        values.push_back(parseWithin(option, text.substr(start, end - start), minimum, maximum));
        start = end + 1;
    }
    if (values.size() > most)
        throw UsageError(std::string(option) + " takes " + std::to_string(most) +
                         " values at the most, not " + std::to_string(values.size()));
    return values;
}

/// The place of a name in rows of things that have one.
template <typename Row>
int parseName(const char* what, const std::string& text, std::span<const Row> rows) {
    std::string names;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (isSameName(rows[i].name, text)) return static_cast<int>(i);
        names += (i == 0 ? "" : ", ") + std::string(rows[i].name);
    }
    throw UsageError(std::string("there is no ") + what + ' ' +
                     quoted(std::filesystem::path(text)) + "; there are " + names);
}

/// The order whose nominal slope this is, in dB per octave, as a place in the orders.
int parseSlope(const std::string& text, std::span<const int> orders) {
    const auto value = parseNumber(text);
    std::string slopes;
    for (std::size_t i = 0; i < orders.size(); ++i) {
        if (value == 6.0 * orders[i]) return static_cast<int>(i);
        slopes += (i == 0 ? "" : ", ") + std::to_string(6 * orders[i]);
    }
    throw UsageError("--slope takes one of " + slopes + " dB per octave, not " +
                     quoted(std::filesystem::path(text)));
}

void applySize(Figure& figure, const std::string& text) {
    const std::size_t cross = text.find_first_of("xX");
    if (cross == std::string::npos)
        throw UsageError("--size takes WIDTHxHEIGHT, not " + quoted(std::filesystem::path(text)));
    figure.width = parseWhole("--size", text.substr(0, cross), smallestSide, largestSide);
    figure.height = parseWhole("--size", text.substr(cross + 1), smallestSide, largestSide);
}

Figure plotStyle(const PlotOptions& options) {
    StylePlot plot;
    plot.style = StyleId{parseName<StyleRecipe>("style", options.subject, styleRecipes)};
    plot.sampleRate = options.sampleRate();
    plot.cabinet = options.withCabinet;
    if (options.drive) plot.drives = parseList("--drive", *options.drive, 0.0, 100.0, 5);
    if (options.level) plot.levelDb = parseWithin("--level", *options.level, -100.0, 24.0);
    return styleFigure(plot);
}

Figure plotCrossover(const PlotOptions& options) {
    constexpr int maxBands = palette::numApart;
    CrossoverPlot plot;
    plot.sampleRate = options.sampleRate();
    const double highest = 0.49 * plot.sampleRate;
    if (options.crossover)
        plot.hz = parseList("--crossover", *options.crossover, 1.0, highest, maxBands - 1);
    if (std::ranges::adjacent_find(plot.hz, std::greater_equal<>()) != plot.hz.end())
        throw UsageError("--crossover takes frequencies that ascend");
    const int numBands = options.bands       ? parseWhole("--bands", *options.bands, 1, maxBands)
                         : options.crossover ? static_cast<int>(plot.hz.size()) + 1
                                             : 4;
    if (!options.crossover) plot.hz = evenSplit(numBands);
    if (static_cast<int>(plot.hz.size()) != numBands - 1)
        throw UsageError("--crossover takes a frequency less than there are --bands, " +
                         std::to_string(numBands - 1) + " and not " +
                         std::to_string(plot.hz.size()));
    std::vector<int> orders;
    for (const CrossoverSlopeRow& row : crossoverSlopes)
        orders.push_back(row.order);
    if (options.slope) plot.slope = CrossoverSlope{parseSlope(*options.slope, orders)};
    return crossoverFigure(plot);
}

Figure plotTone(const PlotOptions& options) {
    TonePlot plot;
    plot.sampleRate = options.sampleRate();
    if (options.gain) plot.gainsDb = parseList("--gain", *options.gain, -30.0, 30.0, 8);
    return toneFigure(plot);
}

Figure plotFilter(const PlotOptions& options) {
    FilterPlot plot;
    plot.sampleRate = options.sampleRate();
    if (options.shape)
        plot.shape =
            filterShapes[parseName<FilterShapeRow>("shape", *options.shape, filterShapes)].shape;
    if (options.slope) plot.slope = FilterSlope{parseSlope(*options.slope, polesOfSlope)};
    if (options.frequency) plot.hz = parseWithin("--frequency", *options.frequency, 1.0, 32768.0);
    if (options.gain) plot.gainDb = parseWithin("--gain", *options.gain, -30.0, 30.0);
    if (options.q) plot.q = parseWithin("--q", *options.q, 0.025, 40.0);
    return filterFigure(plot);
}

Figure plotCabinet(const PlotOptions& options) {
    CabinetPlot plot;
    plot.sampleRate = options.sampleRate();
    plot.cabinet = Cabinet{parseWhole("CABINET", options.subject, 1, numCabinets) - 1};
    return cabinetFigure(plot);
}

void plotInto(const PlotOptions& options, Figure (*plot)(const PlotOptions&)) {
    const InterruptFlag interrupt;
    writePicture(options.output, [&] {
        Figure figure = plot(options);
        if (options.size) applySize(figure, *options.size);
        interrupt.throwIfSet();
        return figure;
    });
    std::cout << "Drew " << quoted(options.output) << '\n' << std::flush;
}

/// A kind of picture, and the options that all have.
class Kind {
public:
    Kind(CLI::App& plot, const char* name, const char* description)
        : app(plot.add_subcommand(name, description)) {}

    Kind& subject(const char* name, const char* description) {
        app->add_option(name, options->subject, description)->type_name("")->required();
        return *this;
    }
    Kind& option(const char* name, std::optional<std::string> PlotOptions::*member,
                 const char* type, const char* description) {
        app->add_option(name, (*options).*member, description)->type_name(type);
        return *this;
    }
    Kind& flag(const char* name, bool PlotOptions::*member, const char* description) {
        app->add_flag(name, (*options).*member, description);
        return *this;
    }
    void draws(Figure (*plot)(const PlotOptions&), const char* footer) {
        app->add_option("OUT", options->output, "The picture to write, .png or .svg")
            ->type_name("")
            ->required();
        app->add_option("--rate", options->rate, "Sample rate, 8000 to 384000")
            ->type_name("HZ")
            ->capture_default_str();
        option("--size", &PlotOptions::size, "WxH", "Pixels, 480 to 8000 each");
        app->footer(footer);
        app->callback([options = options, plot] { plotInto(*options, plot); });
    }

private:
    CLI::App* app;
    std::shared_ptr<PlotOptions> options = std::make_shared<PlotOptions>();
};

void addStyleKind(CLI::App& plot) {
    Kind(plot, "style", "Curve, wave and spectrum of a style for a sine of 997 Hz")
        .subject("STYLE", "Its name, in upper or lower case")
        .option("--drive", &PlotOptions::drive, "PERCENT,...",
                "Up to five drives, 0 to 100; else 0,50,100")
        .option("--level", &PlotOptions::level, "DB", "Peak of the sine in dBFS; else -12")
        .flag("--cabinet", &PlotOptions::withCabinet, "Put the style's loudspeaker behind it")
        .draws(plotStyle, R"(Examples:
  cinder plot style "Warm Tube" tube.png
  cinder plot style lead-amp lead.svg --drive 20,80 --level -18 --cabinet)");
}

void addCrossoverKind(CLI::App& plot) {
    Kind(plot, "crossover", "Magnitude and phase of the bands of a split and their sum")
        .option("--bands", &PlotOptions::bands, "N", "Bands, 1 to 6; else 4")
        .option("--crossover", &PlotOptions::crossover, "HZ,...",
                "Where they meet, ascending; else bands of as many octaves each")
        .option("--slope", &PlotOptions::slope, "DB",
                "Of each crossover: 6, 12, 24, 36 or 48 dB per octave; else 24")
        .draws(plotCrossover, R"(Examples:
  cinder plot crossover split.png --bands 6
  cinder plot crossover split.svg --crossover 120,800,5000 --slope 48)");
}

void addToneKind(CLI::App& plot) {
    Kind(plot, "tone", "Bass, Mid, Treble and Presence of a band at several gains")
        .option("--gain", &PlotOptions::gain, "DB,...",
                "Up to eight gains, -30 to 30; else -24,-12,-6,6,12,24")
        .draws(plotTone, R"(Examples:
  cinder plot tone tone.png
  cinder plot tone tone.svg --gain -3,3,6)");
}

void addFilterKind(CLI::App& plot) {
    Kind(plot, "filter", "Magnitude and phase of an equaliser, beside the analog one")
        .option("--shape", &PlotOptions::shape, "NAME",
                "low-pass, low-shelf, high-pass, high-shelf or bell; else bell")
        .option("--frequency", &PlotOptions::frequency, "HZ", "1 to 32768; else 1000")
        .option("--gain", &PlotOptions::gain, "DB", "-30 to 30, for shelves and bell; else 6")
        .option("--q", &PlotOptions::q, "Q", "0.025 to 40; else 1, which is the plain design")
        .option("--slope", &PlotOptions::slope, "DB",
                "6, 12, 18, 24, 30, 36, 48, 72 or 96 dB per octave; else 12")
        .draws(plotFilter, R"(Examples:
  cinder plot filter bell.png --shape bell --frequency 1000 --gain 6 --q 1
  cinder plot filter low.svg --shape low-pass --frequency 5000 --slope 48)");
}

void addCabinetKind(CLI::App& plot) {
    Kind(plot, "cabinet", "Impulse response and magnitude of a loudspeaker")
        .subject("CABINET", "Its number, 1 to 4")
        .draws(plotCabinet, R"(Examples:
  cinder plot cabinet 2 speaker.png
  cinder plot cabinet 4 speaker.svg --rate 96000)");
}

/// The parser's own complaint would not say what there is.
void requireKind(const CLI::App& plot) {
    if (!plot.get_subcommands().empty()) return;
    std::string kinds;
    for (const CLI::App* kind : plot.get_subcommands([](const CLI::App*) { return true; }))
        kinds += (kinds.empty() ? "" : ", ") + kind->get_name();
    throw UsageError("plot takes what to draw: " + kinds);
}

constexpr const char* footerText =
    R"(The ending of OUT, .png or .svg, chooses what is written. OUT appears when it is
whole; until then what was there stays.

Examples:
  cinder plot style "Warm Tube" tube.png
  cinder plot crossover split.svg --bands 6
  cinder plot filter bell.png --shape bell --frequency 1000 --gain 6

`cinder plot KIND --help` tells all about a kind.)";

}  // namespace

void addPlotCommand(CLI::App& program) {
    CLI::App* const plot =
        program.add_subcommand("plot", "Draw a style, the split, a filter, a cabinet");
    plot->callback([plot] { requireKind(*plot); });
    plot->footer(footerText);
    for (const auto addKind :
         {addStyleKind, addCrossoverKind, addToneKind, addFilterKind, addCabinetKind})
        addKind(*plot);
    for (CLI::App* const kind : plot->get_subcommands({}))
        kind->group("Kinds");
}

}  // namespace cinder
