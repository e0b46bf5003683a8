#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Paths inside the system are UTF-8 with backslashes between the names, and the path of a folder
// ends in one: "\home\anna\Documents\" is /home/anna/Documents. [any] but the audio thread

namespace cinder {

/// The path as the system we run on has it: `\` and `/` both become `/`, and each of the
/// characters that `systemPath` has put in the place of a byte becomes that byte.
/// Errors  an empty path where there is a zero in it, since no file has such a name
std::filesystem::path nativePath(std::string_view path);

/// The path as it is inside; `nativePath` gives back the same bytes, whatever they are, so that no
/// two files have one path. `/` becomes `\`. A backslash, and each byte that isn't part of UTF-8,
/// becomes the character U+F000 + byte: the name `a\b` is "a<U+F05C>b". In a name that has one of
/// U+F05C and U+F080 to U+F0FF itself, that character's three bytes are replaced in the same way.
std::string systemPath(const std::filesystem::path& path);

/// Adds one where the path isn't empty and has none.
std::string withTrailingBackslash(std::string path);
std::string withoutTrailingBackslash(std::string path);
/// What is behind the last backslash, or all of it.
std::string lastPathComponent(std::string_view path);
/// Without the last "." of the last component and all behind it; the same where there is none.
std::string removeExtension(std::string_view path);

/// Makes the folder and all above it. True when it is there afterwards, as a folder.
bool createFolders(std::string_view path);
bool folderExists(std::string_view path);
/// Something is there, links followed, and it is no folder.
bool fileExists(std::string_view path);
/// The path names a link, and the link leads to a folder that it lies in itself.
bool isCircularLink(std::string_view path);

/// Where the user keeps documents: XDG_DOCUMENTS_DIR in user-dirs.dirs in the folder of the
/// user's configuration, or else Documents in the home folder. Empty where there is no home.
std::string documentsFolder();
/// $XDG_DATA_HOME or .local/share in the home folder, then "Kestrelon\", the name and "\". Empty
/// where there is no home.
std::string applicationDataFolder(std::string_view name);
/// documentsFolder(), "Kestrelon\", the name and "\". Empty where there is no home.
std::string defaultPresetFolder(std::string_view name);

/// "Cinder" for version 1, "Cinder 2" for version 2: what folders of the product are called.
std::string versionedName(std::string_view product, int major);
/// "Software\Kestrelon\Cinder\1.0"
std::string registryKeyPath(std::string_view product, int major);

}  // namespace cinder
