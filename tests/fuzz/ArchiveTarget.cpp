#include <doctest/doctest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/FuzzTarget.h"
#include "presets/archive/ArchiveFormat.h"
#include "presets/archive/SetupArchive.h"
#include "presets/files/Paths.h"
#include "support/TemporaryFolder.h"

namespace cinder::test {

namespace {

namespace fs = std::filesystem;

/// A destination that has links out of it, under names that archives use.
struct Trap {
    Trap() {
        putBytes(folder / "outside", "untouched");
        fs::create_directory(folder / "elsewhere");
        fs::create_directory(destination);
        fs::create_symlink("../outside", destination / "a");
        fs::create_symlink("../elsewhere", destination / "b");
        putBytes(destination / "c", "mine");
    }
    const TemporaryFolder folder;
    const fs::path destination = folder / "in";
};

std::vector<archive::ListedEntry> listed(std::string_view bytes, bool& isWhole) {
    std::istringstream stream{std::string(bytes)};
    std::vector<archive::ListedEntry> entries;
    isWhole = archive::listArchive(stream, entries);
    for (const archive::ListedEntry& found : entries) {
        const archive::Entry& entry = found.entry;
        CHECK((entry.name.empty() || archive::isGoodName(entry.name)));
        CHECK(entry.size() >= 0);
        CHECK(entry.content.next >= static_cast<std::int64_t>(archive::headerBytes));
        CHECK(entry.content.end <= static_cast<std::int64_t>(bytes.size()));
    }
    return entries;
}

/// All that the folder holds by the list is there, as what it should be.
void checkExtracted(const std::vector<archive::ListedEntry>& entries, const fs::path& destination) {
    std::string prefix;
    for (const archive::ListedEntry& found : entries) {
        const bool isTopFolder = found.entry.isFolder && found.path.find('/') == std::string::npos;
        if (isTopFolder) {
            if (!prefix.empty()) return;  // another folder of that name, which nobody asked for
            if (found.path == "f" || found.path == "F") prefix = found.path + "/";
        } else if (!prefix.empty() && found.path.starts_with(prefix)) {
            const auto status = fs::symlink_status(destination / found.path.substr(prefix.size()));
            CHECK(status.type() ==
                  (found.entry.isFolder ? fs::file_type::directory : fs::file_type::regular));
        }
    }
}

}  // namespace

void fuzzArchive(std::string_view bytes) {
    bool isWhole = false;
    const auto entries = listed(bytes, isWhole);

    const bool overwrites = bytes.size() % 2 == 0;
    const Trap trap;
    SetupArchive setup(std::make_unique<std::istringstream>(std::string(bytes)));
    setup.overwrite = overwrites;
    const bool isExtracted = setup.extractUnflushed("f", systemPath(trap.destination));
    CHECK(bytesOf(trap.folder / "outside") == "untouched");
    CHECK(fs::is_empty(trap.folder / "elsewhere"));
    CHECK(trap.folder.names() == std::vector<std::string>{"elsewhere", "in", "outside"});
    if (!overwrites) CHECK(bytesOf(trap.destination / "c") == "mine");
    if (isExtracted && overwrites && isWhole) checkExtracted(entries, trap.destination);
    for (const auto& found : fs::recursive_directory_iterator(trap.destination))
        CHECK(found.path().extension() != ".part");
}

}  // namespace cinder::test
