#include "cinder/RenderCommand.h"

#include "cinder/OptionValues.h"
#include "cinder/UsageError.h"
#include "cinder/audio/AudioFileReader.h"
#include "cinder/audio/AudioFileWriter.h"
#include "cinder/audio/InterruptFlag.h"
#include "cinder/audio/LevelMeter.h"
#include "cinder/audio/MonoReader.h"
#include "cinder/audio/ProgressBar.h"
#include "cinder/audio/ResamplingReader.h"
#include "cinder/audio/UserError.h"
#include "cinder/plot/Picture.h"
#include "cinder/plot/SpectrumRecorder.h"
#include "cinder/presets/PresetFile.h"
#include "cinder/render/Automation.h"
#include "cinder/render/HostEvents.h"
#include "cinder/render/MidiFile.h"
#include "cinder/render/OfflineRender.h"
#include "cinder/render/RenderReport.h"
#include "cinder/render/RenderSettings.h"
#include "cinder/render/RenderStart.h"
#include "host/DirectPluginAdapter.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cinder {

namespace {

constexpr int largestBlock = 65536;
constexpr int lowestRate = 8000;
constexpr int highestRate = 384000;
constexpr double slowestTempo = 1.0, fastestTempo = 999.0;
constexpr double longestTail = 3600.0;  // seconds
/// Of all that is random, so that a rendering can be repeated.
constexpr std::uint32_t seed = 1;

/// As typed.
struct RenderOptions {
    using File = std::optional<std::filesystem::path>;

    std::filesystem::path input;
    std::filesystem::path output;
    std::string block = "512";
    std::optional<std::string> rate;  // none: that of the input
    std::string tempo = "120";
    std::string tail = "0";
    RenderStart start;
    RenderStart::Saved saved;
    std::vector<std::filesystem::path> parameterFiles;
    std::vector<std::string> settings;
    File automation, midi, sideChain, spectrum;
    bool isMono = false;
    bool keepsLatency = false;
};

/// What the options and the files behind them say, but for the audio.
struct Score {
    explicit Score(const RenderOptions& options)
        : blockSize(parseWhole("--block", options.block, 1, largestBlock)),
          tempo(parseWithin("--tempo", options.tempo, slowestTempo, fastestTempo)),
          tail(parseWithin("--tail", options.tail, 0.0, longestTail)) {
        if (options.rate) rate = parseWhole("--rate", *options.rate, lowestRate, highestRate);
        for (const std::filesystem::path& file : options.parameterFiles)
            settings.setFromFile(file);
        for (const std::string& text : options.settings)
            settings.set(text);
        if (options.automation)
            automation = readAutomation(*options.automation, settings.getTree());
        if (options.midi) midi = readMidiFile(*options.midi);
    }

    int blockSize;
    double tempo;
    double tail;
    std::optional<int> rate;
    RenderSettings settings;
    Automation automation;
    std::vector<MidiFileEvent> midi;
};

using Listener = std::function<void(std::span<const float* const> channels, int numFrames)>;

/// Lets somebody hear what a reader gives, on its way.
class TappedReader final : public AudioReader {
public:
    TappedReader(AudioReader& source, Listener listener)
        : source(source), listener(std::move(listener)) {}

    int read(std::span<float* const> channels, int maxFrames) override {
        const int got = source.read(channels, maxFrames);
        if (got > 0) listener({channels.data(), channels.size()}, got);
        return got;
    }
    int numChannels() const override { return source.numChannels(); }
    int sampleRate() const override { return source.sampleRate(); }
    std::int64_t numFrames() const override { return source.numFrames(); }

private:
    AudioReader& source;
    Listener listener;
};

/// An audio file as the processor gets it: metered, in mono where that is asked for, at the rate.
class Intake {
public:
    Intake(const std::filesystem::path& path, bool isMono, std::optional<int> rate)
        : file(path), metered(file, [this](auto channels, int n) { levels.add(channels, n); }) {
        if (isMono && file.numChannels() > 1) last = &mono.emplace(*last);
        if (rate && *rate != file.sampleRate()) last = &resampled.emplace(*last, *rate);
    }
    Intake(const Intake&) = delete;
    Intake& operator=(const Intake&) = delete;

    /// Before anything is read.
    void tap(Listener listener) { last = &tapped.emplace(*last, std::move(listener)); }

    AudioReader& audio() { return *last; }
    const AudioReader& asStored() const { return file; }
    const LevelMeter& getLevels() const { return levels; }

private:
    AudioFileReader file;
    LevelMeter levels;
    TappedReader metered;
    std::optional<MonoReader> mono;
    std::optional<ResamplingReader> resampled;
    std::optional<TappedReader> tapped;
    AudioReader* last = &metered;
};

double secondsNow() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

std::string countText(std::size_t count, const std::string& what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

RenderReport::Side describe(const std::filesystem::path& file, const AudioReader& audio) {
    return {quoted(file), audio.numFrames(), audio.sampleRate(), audio.numChannels(), {}};
}

/// "'moves.csv', 12 points of Mix, Output Gain"
std::string automationText(const std::filesystem::path& file, const Score& score) {
    std::size_t numPoints = 0;
    std::string names;
    for (const AutomationLane& lane : score.automation) {
        numPoints += lane.points.size();
        names += (names.empty() ? " of " : ", ") +
                 score.settings.getTree().parameter(lane.parameter)->getName();
    }
    return quoted(file) + ", " + countText(numPoints, "point") + names;
}

/// `before`: the values that the instance had when the command's own were set.
void describeScore(RenderReport& report, const RenderOptions& options, const Score& score,
                   const std::vector<float>& before) {
    if (options.start.preset)
        report.with.emplace_back("preset", quoted(std::filesystem::path(*options.start.preset)));
    if (options.start.state) report.with.emplace_back("state", quoted(*options.start.state));
    const std::string settings = score.settings.text(before);
    if (!settings.empty()) report.with.emplace_back("with", settings);
    if (report.with.empty()) report.with.emplace_back("with", "all parameters at their defaults");
    if (options.automation)
        report.with.emplace_back("moving", automationText(*options.automation, score));
    if (options.midi)
        report.with.emplace_back(
            "MIDI", quoted(*options.midi) + ", " + countText(score.midi.size(), "message"));
    report.with.emplace_back("tempo", numberText(static_cast<float>(score.tempo)) + " BPM");
    if (options.sideChain) report.with.emplace_back("side chain", quoted(*options.sideChain));
}

/// Runs `render` into `writer`, with a progress bar, until it ends or is broken off.
void renderInto(AudioFileWriter& writer, OfflineRender& render, const Listener& listener,
                const InterruptFlag& interrupt) {
    ProgressBar progress("rendering", render.numFrames());
    render.run([&](std::span<const float* const> channels, int count) {
        interrupt.throwIfSet();
        listener(channels, count);
        writer.write(channels, count);
        progress.update(writer.numFrames());
    });
    interrupt.throwIfSet();
}

/// With a figure, that becomes a picture of the spectra.
RenderReport renderFile(const RenderOptions& options, const Score& score, Figure* figure) {
    const InterruptFlag interrupt;
    Intake input(options.input, options.isMono, score.rate);
    const int rate = input.audio().sampleRate(), numChannels = input.audio().numChannels();
    std::optional<Intake> sideChain;
    if (options.sideChain) sideChain.emplace(*options.sideChain, numChannels == 1, rate);
    std::optional<SpectrumRecorder> spectrum;
    if (figure) {
        spectrum.emplace(numChannels);
        input.tap([&](auto channels, int count) { spectrum->addInput(channels, count); });
    }

    DirectPluginAdapter instance(numChannels == 1 ? monoLayout : stereoLayout, seed);
    const std::vector<float> before = options.start.load(instance, score.settings);
    score.settings.apply(instance.getPlugin());
    const RenderSnapshot snapshot(instance, score.settings);
    HostEvents events(score.automation, score.midi, rate);
    OfflineRender render(input.audio(), instance, events,
                         {.blockSize = score.blockSize,
                          .beatsPerMinute = score.tempo,
                          .tailFrames = std::llround(score.tail * rate),
                          .sideChain = sideChain ? &sideChain->audio() : nullptr,
                          .takesLatencyOut = !options.keepsLatency});
    AudioFileWriter writer(options.output, numChannels, rate, render.numFrames());

    RenderReport report;
    report.out = describe(options.output, input.audio());
    report.out.numFrames = render.numFrames();
    report.out.file += ", " + std::string(writer.format().name);
    const double start = secondsNow();
    const auto listen = [&](std::span<const float* const> channels, int count) {
        report.out.levels.add(channels, count);
        if (spectrum) spectrum->addOutput(channels, count);
    };
    renderInto(writer, render, listen, interrupt);
    report.secondsTaken = secondsNow() - start;
    if (spectrum) {
        spectrum->finish();
        *figure = spectrum->figure(options.output.filename().string(), rate);
    }
    writer.commit();
    snapshot.save(options.saved);

    report.in = describe(options.input, input.asStored());
    report.in.levels = input.getLevels();
    describeScore(report, options, score, before);
    report.latencySamples = render.latency();
    report.isLatencyTakenOut = !options.keepsLatency;
    report.numClipped = writer.numClipped();
    return report;
}

void runRender(const RenderOptions& options) {
    if (options.saved.preset && !canHoldPreset(*options.saved.preset))
        throw UsageError("--save-preset takes a .knp or a .txt file, not " +
                         quoted(*options.saved.preset));
    const Score score(options);
    RenderReport report;
    if (options.spectrum)
        writePicture(*options.spectrum, [&] {
            Figure figure;
            report = renderFile(options, score, &figure);
            return figure;
        });
    else
        report = renderFile(options, score, nullptr);
    std::cout << report.text() << std::flush;
}

/// What --help says behind the list of options, in lines of at most 80 columns.
constexpr const char* footerText =
    R"(Reads a WAV, AIFF, FLAC or Ogg file, mono or stereo, of any rate and length,
plays it through the effect in blocks as a host would, and writes what comes
out, in step with the input and as long. OUT appears when it is whole; until
then what was there stays. The ending of OUT chooses its format: .wav (32-bit
float), .aiff .aif .flac (24 bit), .ogg .oga (Vorbis). The same command gives
the same samples every time.

A preset is one of the preset folder, where `cinder presets` finds them, or a
file: .knp, or .txt with what `cinder preset show` prints. --params and --set
change what it says; without a preset all is at its default.

`cinder params` lists the parameters. NAME is a parameter's name in upper or
lower case, or its id; VALUE is what a user types: 70%, -6 dB, 1.2 kHz, A4, Warm
Tube. A file of parameters has one NAME=VALUE in a line; what --set says counts
more. A line that begins with # is a remark, there and in the automation.

Automation is a table with commas: seconds, parameter, value. Between two points
of a parameter what is stored goes straight from one to the other, in a step
every 64 samples, wherever the blocks end; parameters that have steps stay
where they are until the next point. A name or value with a comma stands in
quotes. The effect smooths what moves, as it does for a host.

MIDI plays by the file's own tempo. --tempo is what the host says: the song
starts at 0 and counts quarter notes. A side chain that is shorter than IN is
silent from then on.

Examples:
  cinder render drums.wav out.wav
      as a host with blocks of 512 samples would play it, all at its default
  cinder render drums.wav out.flac --set "Band 1 Drive=70%" \
      --set "Band 1 Style=Warm Tape" --set "High Quality=On"
      harder, by another style and with the least aliasing
  cinder render drums.wav out.wav --preset "Clean" --set "Mix=50%" \
      --save-preset half.knp
      half of what the preset does, kept for next time
  cinder render pad.wav out.wav --params pad.txt --tempo 96 --tail 2
      as the file says, in time, and two seconds longer for what rings on
  cinder render bass.wav out.wav --automation moves.csv --midi notes.mid
      with what a host would have sent meanwhile
  cinder render drums.wav out.wav --set "Band 1 Drive=90%" --spectrum drums.png
      with a picture of what the drive has added
  cinder render drums.wav same.wav --set Mix=0%
      the very same samples

Ends with 0 when done, 1 where a file cannot be read or written, 2 for a command
that makes no sense, 128 + signal when interrupted.)";

void addFiles(CLI::App& command, RenderOptions& options) {
    command.add_option("IN", options.input, "The audio file to read")->type_name("")->required();
    command.add_option("OUT", options.output, "The audio file to write; may be IN")
        ->type_name("")
        ->required();
}

void addParameters(CLI::App& command, RenderOptions& options) {
    auto* const preset =
        command
            .add_option("--preset", options.start.preset, "Start from a preset, by name or file")
            ->type_name("NAME|FILE");
    command.add_option("--state", options.start.state, "Start from a state of an instance")
        ->type_name("FILE")
        ->excludes(preset);
    command.add_option("--set", options.settings, "Give a parameter a value; the last one counts")
        ->type_name("NAME=VALUE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command.add_option("--params", options.parameterFiles, "A file with one NAME=VALUE in a line")
        ->type_name("FILE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command.add_option("--automation", options.automation, "Move parameters, by a table")
        ->type_name("CSV");
    command.add_option("--midi", options.midi, "Play a MIDI file to the effect")->type_name("FILE");
    command.add_option("--sidechain", options.sideChain, "Audio for the side chain")
        ->type_name("FILE");
}

void addSaving(CLI::App& command, RenderOptions& options) {
    command
        .add_option("--save-preset", options.saved.preset,
                    "Save what the effect starts with as a preset, .knp or .txt")
        ->type_name("FILE");
    command
        .add_option("--save-state", options.saved.state,
                    "Save what a host would keep of the effect at the start")
        ->type_name("FILE");
}

void addHost(CLI::App& command, RenderOptions& options) {
    command.add_option("--tempo", options.tempo, "Beats a minute, 1 to 999")
        ->type_name("BPM")
        ->capture_default_str();
    command.add_option("--block", options.block, "Samples in a host block, 1 to 65536")
        ->type_name("N")
        ->capture_default_str();
    command
        .add_option("--rate", options.rate,
                    "Rate to process and write at, 8000 to 384000; else IN's")
        ->type_name("HZ");
    command.add_flag("--mono", options.isMono, "Mix IN to mono, and run the effect in mono");
    command.add_option("--tail", options.tail, "Silence to play behind IN, up to 3600")
        ->type_name("SECONDS")
        ->capture_default_str();
    command.add_flag("--no-latency-compensation", options.keepsLatency,
                     "Leave OUT as late as the effect is");
    command
        .add_option("--spectrum", options.spectrum,
                    "Draw the spectra of input and output, .png or .svg")
        ->type_name("FILE");
}

}  // namespace

void addRenderCommand(CLI::App& program) {
    const auto options = std::make_shared<RenderOptions>();
    CLI::App* const command =
        program.add_subcommand("render", "Render an audio file through the effect");
    addFiles(*command, *options);
    addParameters(*command, *options);
    addSaving(*command, *options);
    addHost(*command, *options);
    command->footer(footerText);
    command->callback([options] { runRender(*options); });
}

}  // namespace cinder
