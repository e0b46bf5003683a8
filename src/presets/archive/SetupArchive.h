#pragma once

#include "core/Property.h"
#include "presets/archive/ArchiveReader.h"
#include "presets/archive/OpenFolder.h"

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

namespace cinder {

/// Unpacks the factory files. Each is inflated whole and then put in place by a rename.
/// Shape   the folders of the archive's top level are looked up by name, in any case
/// Range   files of up to 64 MB, folders to a depth of 64
/// State   the stream, owned, from the place where it stands; lives for one extraction
/// Errors  false. A file that can't be unpacked or written, and a name that no file may have, fail
///         alone and the others are still tried; where the archive's own sizes contradict each
///         other, all ends there. Nothing outside the destination is touched, and no link in it
///         leads out: a file takes the place of a link, and a link stands for no folder
/// [ui] [host]
class SetupArchive {
public:
    explicit SetupArchive(std::unique_ptr<std::istream> stream);
    ~SetupArchive();

    /// Replace files that exist. If not, they stay as they are and count as unpacked.
    Property<bool> overwrite{false};

    /// The destination, a path inside the system, is made where it is missing.
    bool extractArchiveFolder(std::string_view folderName, const std::string& destination);
    /// Without waiting for the disk: for files that get their place together, later.
    bool extractUnflushed(std::string_view folderName, const std::string& destination);

private:
    bool find(std::string_view folderName, archive::Entry& found) const;
    bool extract(std::string_view folderName, const std::string& destination,
                 archive::OpenFolder::Flush flush);
    bool extractFolder(const archive::OpenFolder& folder, archive::Level level, int nesting);
    bool extractEntry(const archive::OpenFolder& folder, const archive::Entry& entry, int nesting);
    bool extractFile(const archive::OpenFolder& folder, const archive::Entry& entry);

    std::unique_ptr<std::istream> stream;
    archive::Reader reader;
    bool isBroken = false;
};

/// Unpacks one folder of an archive. [ui] [host]
bool extractArchiveFolder(std::unique_ptr<std::istream> stream, std::string_view folderName,
                          const std::string& destination, bool overwrite);

}  // namespace cinder
