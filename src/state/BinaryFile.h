#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

#include "state/BinaryData.h"
#include "state/MemoryStream.h"

namespace cinder {

/// Reads a file from its start.
/// Errors  the stream has failed where the file can't be opened or isn't a regular one: a pipe
///         would block
class BinaryFileReader final : private OwnedFirst<std::ifstream>, public BinaryDataReader {
public:
    explicit BinaryFileReader(const std::filesystem::path& path);
};

/// Writes over the start of a file, or makes one. What the file holds behind the new content stays,
/// as in a file that is opened without being cut, but nothing reaches the disk before commit(),
/// which puts all of it in its place at once.
/// State   the content to be; the stream reads it and writes it, each from a place of its own that
///         begins at the start
/// Errors  the stream has failed where something is there that can't be read. Without a commit()
///         the file stays as it was
class BinaryFileWriter final : private OwnedFirst<std::stringstream>, public BinaryDataWriter {
public:
    explicit BinaryFileWriter(const std::filesystem::path& path);

    std::iostream& getStream() { return owned; }
    /// False: the stream has failed, or the disk refuses; the file is as it was.
    bool commit();

private:
    const std::filesystem::path path;
};

/// Reads bytes in memory, such as a resource of the module or a chunk of the host's. Not owned.
class BinaryResourceReader final : private OwnedFirst<MemoryStream>, public BinaryDataReader {
public:
    explicit BinaryResourceReader(std::string_view bytes);
};

}  // namespace cinder
