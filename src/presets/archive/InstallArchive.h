#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

namespace cinder {

/// Unpacks one folder of an archive so that it is there whole or not at all: into a folder
/// `.NAME.XXXXXX.part` beside the destination, to the disk, and then to its name. Whoever is cut
/// off leaves that folder behind, and the next one removes it; several at once make one tree.
/// Shape   the destination, a path inside the system, is missing or empty. If it holds anything, or
///         nothing can be made beside it, files that it lacks are added one by one
/// Errors  false, with nothing changed where it was missing or empty
/// [ui] [host]
bool installArchiveFolder(std::unique_ptr<std::istream> stream, std::string_view folderName,
                          const std::string& destination);

}  // namespace cinder
