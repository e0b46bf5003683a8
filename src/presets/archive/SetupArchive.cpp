#include "presets/archive/SetupArchive.h"

#include "presets/archive/ArchiveFormat.h"
#include "presets/archive/Compression.h"
#include "presets/files/CompareNames.h"
#include "presets/files/Paths.h"

#include <istream>
#include <optional>
#include <utility>

namespace cinder {

using archive::Entry;
using archive::Level;
using archive::OpenFolder;
using Step = archive::Reader::Step;

SetupArchive::SetupArchive(std::unique_ptr<std::istream> stream)
    : stream(std::move(stream)), reader(*this->stream) {}

SetupArchive::~SetupArchive() = default;

bool SetupArchive::extractArchiveFolder(std::string_view folderName,
                                        const std::string& destination) {
    return extract(folderName, destination, OpenFolder::Flush::EachFile);
}

bool SetupArchive::extractUnflushed(std::string_view folderName, const std::string& destination) {
    return extract(folderName, destination, OpenFolder::Flush::Later);
}

bool SetupArchive::find(std::string_view folderName, Entry& found) const {
    if (!reader.isGood()) return false;
    Level level = reader.top();
    while (reader.next(level, found) == Step::Entry)
        if (found.isFolder && !found.name.empty() && isSameNameInAnyCase(found.name, folderName))
            return true;
    return false;
}

bool SetupArchive::extract(std::string_view folderName, const std::string& destination,
                           OpenFolder::Flush flush) {
    Entry found;
    if (!find(folderName, found) || !createFolders(destination)) return false;
    const auto folder = OpenFolder::open(nativePath(destination), flush);
    isBroken = false;
    return folder && extractFolder(*folder, found.content, 1);
}

bool SetupArchive::extractFolder(const OpenFolder& folder, Level level, int nesting) {
    bool result = true;
    Entry entry;
    Step step;
    while ((step = reader.next(level, entry)) == Step::Entry) {
        result = extractEntry(folder, entry, nesting) && result;
        if (isBroken) return false;
    }
    isBroken = step == Step::Broken;
    folder.flushNames();
    return result && !isBroken;
}

bool SetupArchive::extractEntry(const OpenFolder& folder, const Entry& entry, int nesting) {
    if (entry.name.empty()) return false;
    if (!entry.isFolder) return extractFile(folder, entry);
    isBroken = nesting == archive::maxNesting;
    if (isBroken) return false;
    const auto inner = folder.subfolder(entry.name);
    return inner && extractFolder(*inner, entry.content, nesting + 1);
}

bool SetupArchive::extractFile(const OpenFolder& folder, const Entry& entry) {
    if (!overwrite.get() && folder.hasFile(entry.name)) return true;
    if (entry.unpackedSize == 0) return folder.replaceFile(entry.name, {});
    const auto bytes = archive::inflated(reader.at(entry), entry.size(), entry.unpackedSize);
    return bytes && folder.replaceFile(entry.name, *bytes);
}

bool extractArchiveFolder(std::unique_ptr<std::istream> stream, std::string_view folderName,
                          const std::string& destination, bool overwrite) {
    SetupArchive setup(std::move(stream));
    setup.overwrite = overwrite;
    return setup.extractArchiveFolder(folderName, destination);
}

}  // namespace cinder
