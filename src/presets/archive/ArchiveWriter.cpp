#include "presets/archive/ArchiveWriter.h"

#include "presets/archive/ArchiveFormat.h"
#include "presets/archive/Compression.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace cinder {

namespace {

void putNumber(std::string& bytes, std::size_t offset, std::size_t number) {
    if (number > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("the archive is too large");
    for (std::size_t i = 0; i < 4; ++i)
        bytes[offset + i] = static_cast<char>(number >> 8 * i & 0xff);
}

std::string entryHeader(std::string_view name, std::size_t size, std::size_t unpackedSize) {
    if (size > std::numeric_limits<std::int32_t>::max())
        throw std::length_error("the archive is too large");
    std::string header(archive::entryHeaderBytes, '\0');
    header[0] = static_cast<char>(name.size());
    std::ranges::copy(name, header.begin() + 1);
    putNumber(header, archive::entrySizeOffset, size);
    putNumber(header, archive::entrySizeOffset + 4, unpackedSize);
    return header;
}

[[noreturn]] void refuse(std::string_view path, const char* reason) {
    throw std::invalid_argument(std::string(path) + ": " + reason);
}

}  // namespace

ArchiveWriter::Node& ArchiveWriter::folderAt(std::string_view path) {
    Node* node = &root;
    int nesting = 0;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::string_view name = path.substr(begin, end - begin);
        begin = end + 1;
        if (!archive::isGoodName(name)) refuse(path, "an archive can't hold this name");
        if (++nesting > archive::maxNesting) refuse(path, "too many folders within folders");
        const auto place = std::ranges::lower_bound(node->children, name, {}, &Node::name);
        const bool isThere = place != node->children.end() && place->name == name;
        node = isThere ? &*place : &*node->children.insert(place, Node{std::string(name)});
        if (!node->isFolder) refuse(path, "there is a file where it needs a folder");
    }
    return *node;
}

void ArchiveWriter::addFile(std::string_view path, std::string_view bytes) {
    const std::size_t slash = path.rfind('/');
    const bool isInFolder = slash != std::string_view::npos;
    const std::string_view name = isInFolder ? path.substr(slash + 1) : path;
    if (!archive::isGoodName(name)) refuse(path, "an archive can't hold this name");
    if (bytes.size() > archive::maxFileBytes) refuse(path, "too large for an archive");
    Node& folder = isInFolder ? folderAt(path.substr(0, slash)) : root;
    const auto place = std::ranges::lower_bound(folder.children, name, {}, &Node::name);
    if (place != folder.children.end() && place->name == name) refuse(path, "there already");
    folder.children.insert(
        place, Node{std::string(name), false, bytes.empty() ? "" : archive::deflated(bytes),
                    bytes.size()});
    ++fileCount;
}

void ArchiveWriter::addFolder(std::string_view path) {
    folderAt(path);
}

void ArchiveWriter::append(const Node& node, std::string& out) {
    if (!node.isFolder) {
        out += entryHeader(node.name, node.packed.size(), node.unpackedSize) + node.packed;
        return;
    }
    std::string content;
    for (const Node& child : node.children)
        append(child, content);
    content += entryHeader("", 0, 0);
    out += entryHeader(node.name, content.size(), archive::folderMark) + content;
}

std::string ArchiveWriter::bytes() const {
    std::string out(archive::headerBytes, '\0');
    for (const Node& child : root.children)
        append(child, out);
    out += entryHeader("", 0, 0);
    std::ranges::copy(archive::magic, out.begin());
    putNumber(out, archive::lengthOffset, out.size() - archive::lengthStart);
    putNumber(out, archive::fileCountOffset, fileCount);
    return out;
}

}  // namespace cinder
