#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace cinder::archive {

/// A stretch of the archive that holds entries: where the next one begins, and where all end.
struct Level {
    std::int64_t next = 0;
    std::int64_t end = 0;
};

struct Entry {
    std::string name;  ///< empty where it isn't a good one
    bool isFolder = false;
    std::uint32_t unpackedSize = 0;  ///< of a file
    Level content;                   ///< a folder's entries or a file's zlib stream

    std::int64_t size() const { return content.end - content.next; }
};

/// Walks over the entries of an archive, whatever its bytes are.
/// Shape   top() is the outermost level, a folder's `content` the next one in
/// State   the stream, not owned, which must be able to seek; the archive is all of it from the
///         place where it stands
/// Errors  `broken`: a negative size, a size past the end of what encloses it, an end too early.
///         Behind that nothing of the archive can be trusted
class Reader {
public:
    enum class Step { Entry, End, Broken };

    explicit Reader(std::istream& stream);

    /// Is this an archive at all?
    bool isGood() const { return hasMagic; }
    Level top() const { return outermost; }
    /// Reads the level's next entry and moves the level on behind it.
    Step next(Level& level, Entry& entry) const;
    /// The stream, at the start of an entry's content.
    std::istream& at(const Entry& entry) const;

private:
    std::istream& seek(std::int64_t position) const;

    std::istream& stream;
    bool hasMagic = false;
    Level outermost;
};

/// An entry with the folders that it lies in: "Drums/Kit.knp".
struct ListedEntry {
    std::string path;
    Entry entry;
};

/// All entries, folders before what they hold. An entry without a good name is listed as "?".
/// Errors  false, with the entries before the fault
bool listArchive(std::istream& stream, std::vector<ListedEntry>& entries);

}  // namespace cinder::archive
