#pragma once

#include <memory>
#include <string>

namespace cinder {

/// The names in one folder that match a pattern, in no order.
/// Shape   the pattern is the folder's path and then one name in which `*` stands for any bytes;
///         a name matches in any case (A to Z). In the folder's path nothing is special
/// Range   with `directories` the folders, else the files: links are followed, "." and ".." are
///         never among them, and neither is what can't be read like a file (a pipe, a link to
///         nothing)
/// Errors  none: a folder that can't be read has no names, one that breaks off has fewer
/// [any] but the audio thread
class FileEnumerator {
public:
    static std::unique_ptr<FileEnumerator> create(const std::string& pattern, bool directories);

    virtual ~FileEnumerator() = default;
    /// On to the next match, or first to the first one; false at the end.
    virtual bool next() = 0;
    /// The name alone, as paths inside the system have it (Paths.h).
    virtual void name(std::string& out) const = 0;
};

}  // namespace cinder
