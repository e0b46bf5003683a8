#include "cinder/RenderCommand.h"

#include "cinder/BandSettings.h"
#include "cinder/OfflineRender.h"
#include "cinder/OptionValues.h"
#include "cinder/ParameterSettings.h"
#include "cinder/RenderReport.h"
#include "cinder/audio/AudioFileReader.h"
#include "cinder/audio/AudioFileWriter.h"
#include "cinder/audio/InterruptFlag.h"
#include "cinder/audio/LevelMeter.h"
#include "cinder/audio/ProgressBar.h"
#include "cinder/audio/ResamplingReader.h"
#include "cinder/audio/UserError.h"
#include "cinder/bands/BandsProcessor.h"
#include "cinder/shaper/ShaperProcessor.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <filesystem>
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

/// As typed.
struct RenderOptions {
    std::filesystem::path input;
    std::filesystem::path output;
    std::string block = "512";
    std::optional<std::string> rate;  // none: that of the input
    BandOptions bands;
    std::vector<std::string> settings;
};

/// What the audio goes through: bands where one of their options is given, else one curve.
struct Processing {
    explicit Processing(const RenderOptions& options)
        : hasBands(options.bands.areGiven()),
          settings(hasBands ? bandSettings(options.bands, options.settings)
                            : ParameterSettings(shaperParameterRows, options.settings)) {}

    std::unique_ptr<GenericPluginProcessor> makeProcessor(int numChannels) const {
        const std::int32_t layout = numChannels == 1 ? monoLayout : stereoLayout;
        if (hasBands) return std::make_unique<BandsProcessor>(layout);
        return std::make_unique<ShaperProcessor>(layout);
    }
    std::string text() const { return hasBands ? bandText(settings) : settings.text(); }

    bool hasBands;
    ParameterSettings settings;
};

/// Meters what a reader gives, on its way.
class MeteringReader final : public AudioReader {
public:
    MeteringReader(AudioReader& source, LevelMeter& meter) : source(source), meter(meter) {}

    int read(std::span<float* const> channels, int maxFrames) override {
        const int got = source.read(channels, maxFrames);
        meter.add({channels.data(), channels.size()}, got);
        return got;
    }
    int numChannels() const override { return source.numChannels(); }
    int sampleRate() const override { return source.sampleRate(); }
    std::int64_t numFrames() const override { return source.numFrames(); }

private:
    AudioReader& source;
    LevelMeter& meter;
};

double secondsNow() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

RenderReport::Side describe(const std::filesystem::path& file, const AudioReader& audio) {
    return {quoted(file), audio.numFrames(), audio.sampleRate(), audio.numChannels(), {}};
}

/// Runs `source` through `processor` into `writer`, with a progress bar, until it ends or is
/// broken off.
void renderInto(AudioFileWriter& writer, OfflineRender& render, std::int64_t numFrames,
                LevelMeter& levels, const InterruptFlag& interrupt) {
    ProgressBar progress("rendering", numFrames);
    render.run([&](std::span<const float* const> channels, int count) {
        interrupt.throwIfSet();
        levels.add(channels, count);
        writer.write(channels, count);
        progress.update(writer.numFrames());
    });
}

RenderReport renderFile(const RenderOptions& options) {
    const int blockSize = parseWhole("--block", options.block, 1, largestBlock);
    std::optional<int> rate;
    if (options.rate) rate = parseWhole("--rate", *options.rate, lowestRate, highestRate);
    const Processing processing(options);

    const InterruptFlag interrupt;
    RenderReport report;
    AudioFileReader file(options.input);
    report.in = describe(options.input, file);
    MeteringReader metered(file, report.in.levels);
    std::optional<ResamplingReader> resampled;
    if (rate && *rate != file.sampleRate()) resampled.emplace(metered, *rate);
    AudioReader& source = resampled ? static_cast<AudioReader&>(*resampled) : metered;

    const auto processor = processing.makeProcessor(source.numChannels());
    OfflineRender render(source, *processor, processing.settings.values(), blockSize);
    AudioFileWriter writer(options.output, source.numChannels(), source.sampleRate(),
                           source.numFrames());
    report.out = describe(options.output, source);
    const double start = secondsNow();
    renderInto(writer, render, source.numFrames(), report.out.levels, interrupt);
    report.secondsTaken = secondsNow() - start;
    interrupt.throwIfSet();
    writer.commit();

    report.out.file += ", " + std::string(writer.format().name);
    report.settings = processing.text();
    report.latencySamples = render.latency();
    report.numClipped = writer.numClipped();
    return report;
}

/// What --help says behind the list of options, in lines of at most 80 columns.
std::string footer() {
    return R"(Reads a WAV, AIFF, FLAC or Ogg file, mono or stereo, of any rate and length,
sends it through the processor in blocks as a host would, and writes what comes
out, in step with the input and as long. OUT appears when it is whole; until
then what was there stays. The ending of OUT chooses its format: .wav (32-bit
float), .aiff .aif .flac (24 bit), .ogg .oga (Vorbis).

What the processor is: one curve between two gains, or, where --bands,
--crossover, --style or --drive is given, up to six bands with a style each and
their sum. Without --bands there are as many as the longest list is for, and
without --crossover all bands span as many octaves.

Parameters for --set, in upper or lower case, of the one curve:
)" + parameterHelp(shaperParameterRows) +
           R"(
and of the bands; a style goes by its name, with blanks or dashes, for --style
also by its number, from 0:
)" + bandHelp() +
           R"(
Examples:
  cinder render drums.wav out.wav
      as a host with blocks of 512 samples would play it, all at its default
  cinder render drums.wav out.flac --set Drive=24 --set Curve="soft fold"
      harder, and by another curve
  cinder render drums.wav out.wav --style warm-tube --drive 70%
      all of it through one style
  cinder render mix.wav out.wav --crossover 200,2500 \
      --style clean-tape,crunchy-amp,clean-tube --drive 30,80,10
      three bands
  cinder render mix.wav same.wav --bands 6 --style clean-tape --drive 0
      what the split and the sum alone do, or nearly so
  cinder render song.ogg song.aiff --rate 96000 --set Oversampling=2
      processed at 96 kHz, and written so
  cinder render drums.wav same.wav --set Bypass=1
      the very same samples

Ends with 0 when done, 1 where a file cannot be read or written, 2 for a command
that makes no sense, 128 + signal when interrupted.)";
}

}  // namespace

void addRenderCommand(CLI::App& program) {
    const auto options = std::make_shared<RenderOptions>();
    CLI::App* const command =
        program.add_subcommand("render", "Render an audio file through the processor");
    command->add_option("IN", options->input, "The audio file to read")->type_name("")->required();
    command->add_option("OUT", options->output, "The audio file to write; may be IN")
        ->type_name("")
        ->required();
    command->add_option("--block", options->block, "Samples in a host block, 1 to 65536")
        ->type_name("N")
        ->capture_default_str();
    command
        ->add_option("--rate", options->rate,
                     "Rate to process and write at, 8000 to 384000; else IN's")
        ->type_name("HZ");
    command
        ->add_option("--bands", options->bands.bands, "Bands that the sound is split into, 1 to 6")
        ->type_name("N");
    command
        ->add_option("--crossover", options->bands.crossover,
                     "Where they meet, ascending, one fewer than bands")
        ->type_name("HZ,...");
    command->add_option("--style", options->bands.style, "Style of all bands, or of each")
        ->type_name("NAME,...");
    command->add_option("--drive", options->bands.drive, "Drive of all bands, or of each, 0 to 100")
        ->type_name("PERCENT,...");
    command->add_option("--set", options->settings, "Give a parameter a value; the last one counts")
        ->type_name("NAME=VALUE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command->footer(footer());
    command->callback([options] { std::cout << renderFile(*options).text() << std::flush; });
}

}  // namespace cinder
