#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cinder {

/// Packs files into an archive. The result depends on their paths and bytes alone, not on the order
/// in which they come: entries are sorted by the bytes of their names.
/// Shape   paths with '/' between folders, which come into being by being named
/// Errors  std::invalid_argument, which tells the path: a name that no archive may hold, a file
///         twice or where a folder is, one too large, folders too deep. std::length_error: all of
///         it has more than 2^31 bytes
class ArchiveWriter {
public:
    void addFile(std::string_view path, std::string_view bytes);
    void addFolder(std::string_view path);
    std::string bytes() const;

private:
    struct Node {
        std::string name;
        bool isFolder = true;
        std::string packed = {};
        std::size_t unpackedSize = 0;
        std::vector<Node> children = {};  // sorted
    };

    Node& folderAt(std::string_view path);
    static void append(const Node& node, std::string& out);

    Node root;
    std::size_t fileCount = 0;
};

}  // namespace cinder
