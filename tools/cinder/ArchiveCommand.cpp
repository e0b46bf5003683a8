#include "cinder/ArchiveCommand.h"

#include "cinder/FormatOptions.h"
#include "cinder/StandardStreams.h"
#include "cinder/audio/UserError.h"
#include "cinder/render/TextFile.h"
#include "cinder/vocabulary/Listing.h"
#include "core/platform/WholeFile.h"
#include "pack/PackSources.h"
#include "presets/archive/ArchiveReader.h"
#include "presets/archive/SetupArchive.h"
#include "presets/files/Paths.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

namespace cinder {

namespace {

using Path = std::filesystem::path;

/// As typed.
struct ArchiveOptions {
    Path archive, destination, sources;
    std::string folder;
    bool overwrite = false;
};

std::unique_ptr<std::istream> open(const Path& file) {
    return std::make_unique<std::istringstream>(readWhole(file));
}

void list(const Path& file, ListFormat format) {
    const auto stream = open(file);
    std::vector<archive::ListedEntry> entries;
    const bool isWhole = archive::listArchive(*stream, entries);
    Listing listing{{{"path"}, {"size", true}, {"packed", true}}, {}};
    for (const auto& [path, entry] : entries)
        listing.rows.push_back({path + (entry.isFolder ? "/" : ""),
                                entry.isFolder ? "" : std::to_string(entry.unpackedSize),
                                std::to_string(entry.size())});
    if (isWhole || !entries.empty()) std::cout << textOf(listing, format);
    requirePrinted();
    if (!isWhole)
        throw UserError(quoted(file) + (entries.empty() ? " is no archive" : " is damaged") +
                        (entries.empty() ? "" : " behind what is listed"));
}

void extract(const ArchiveOptions& options) {
    const std::string destination = systemPath(std::filesystem::absolute(options.destination));
    auto stream = open(options.archive);
    if (!archive::Reader(*stream).isGood())
        throw UserError(quoted(options.archive) + " is no archive");
    stream->seekg(0);
    if (!extractArchiveFolder(std::move(stream), options.folder, destination, options.overwrite))
        throw UserError("not all of " + quoted(Path(options.folder)) + " in " +
                        quoted(options.archive) + " is there and could be extracted to " +
                        quoted(options.destination));
}

void pack(const ArchiveOptions& options) {
    const std::string bytes = packPresetSources(options.sources);
    if (!platform::writeWholeFile(options.archive, bytes))
        throw UserError("cannot write " + quoted(options.archive));
}

constexpr const char* footerText =
    R"(An archive has two folders: ApplicationData with the component presets, and
FactoryPresets. The plug-in brings one along and unpacks it where there are no
presets yet. SOURCES is a folder with presets as texts, in factory/ and
components/.

Examples:
  cinder archive pack presets factory.bin
  cinder archive list factory.bin
  cinder archive extract factory.bin FactoryPresets ~/Sounds
      which leaves files that are there as they are)";

void addPath(CLI::App& command, const char* name, Path& path, const char* what) {
    command.add_option(name, path, what)->type_name("")->required();
}

}  // namespace

void addArchiveCommand(CLI::App& program) {
    CLI::App* const command =
        program.add_subcommand("archive", "List, extract and pack factory archives");
    command->require_subcommand(1);
    command->footer(footerText);
    const auto options = std::make_shared<ArchiveOptions>();

    CLI::App* const listing = command->add_subcommand("list", "List what is in an archive");
    addPath(*listing, "FILE", options->archive, "The archive");
    const auto format = addFormatOptions(*listing);
    listing->callback([options, format] { list(options->archive, format->format()); });

    CLI::App* const extraction = command->add_subcommand("extract", "Unpack one of its folders");
    addPath(*extraction, "FILE", options->archive, "The archive");
    extraction->add_option("FOLDER", options->folder, "A folder of its top level, in any case")
        ->type_name("")
        ->required();
    addPath(*extraction, "DESTINATION", options->destination, "Where what it holds goes");
    extraction->add_flag("--overwrite", options->overwrite, "Replace files that are there");
    extraction->callback([options] { extract(*options); });

    CLI::App* const packing = command->add_subcommand("pack", "Make an archive from texts");
    addPath(*packing, "SOURCES", options->sources, "The folder of the texts");
    addPath(*packing, "FILE", options->archive, "The archive to write");
    packing->callback([options] { pack(*options); });
}

}  // namespace cinder
