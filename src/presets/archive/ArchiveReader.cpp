#include "presets/archive/ArchiveReader.h"

#include "presets/archive/ArchiveFormat.h"
#include "state/BinaryData.h"
#include "state/MemoryStream.h"

#include <array>
#include <istream>
#include <string_view>

namespace cinder::archive {

Reader::Reader(std::istream& stream) : stream(stream) {
    const std::int64_t start = stream.tellg();
    std::array<char, headerBytes> header{};
    if (start < 0 || !stream.read(header.data(), header.size())) return;
    if (std::string_view(header.data(), magic.size()) != magic) return;
    outermost.next = start + static_cast<std::int64_t>(headerBytes);
    stream.seekg(0, std::ios::end);
    outermost.end = stream.tellg();
    hasMagic = outermost.end >= outermost.next;
}

std::istream& Reader::seek(std::int64_t position) const {
    stream.clear();
    return stream.seekg(position);
}

std::istream& Reader::at(const Entry& entry) const {
    return seek(entry.content.next);
}

Reader::Step Reader::next(Level& level, Entry& entry) const {
    std::array<char, entryHeaderBytes> header{};
    const std::int64_t begin = level.next + static_cast<std::int64_t>(header.size());
    if (begin > level.end || !seek(level.next).read(header.data(), header.size()))
        return Step::Broken;
    const auto nameLength = static_cast<unsigned char>(header[0]);
    if (nameLength == 0) return Step::End;

    std::int32_t size = 0;
    MemoryStream sizes({header.data() + entrySizeOffset, header.size() - entrySizeOffset});
    readValue(sizes, size);
    readValue(sizes, entry.unpackedSize);
    entry.isFolder = entry.unpackedSize == folderMark;
    entry.content = {begin, begin + size};
    if (size < 0 || entry.content.end > level.end) return Step::Broken;
    level.next = entry.content.end;

    entry.name.clear();
    if (nameLength <= maxNameBytes) entry.name.assign(header.data() + 1, nameLength);
    if (!isGoodName(entry.name)) entry.name.clear();
    return Step::Entry;
}

namespace {

bool listLevel(const Reader& reader, Level level, const std::string& folder, int nesting,
               std::vector<ListedEntry>& entries) {
    Entry entry;
    for (;;) {
        const auto step = reader.next(level, entry);
        if (step != Reader::Step::Entry) return step == Reader::Step::End;
        const std::string path = folder + (entry.name.empty() ? "?" : entry.name);
        entries.push_back({path, entry});
        if (entry.isFolder && (nesting == maxNesting ||
                               !listLevel(reader, entry.content, path + "/", nesting + 1, entries)))
            return false;
    }
}

}  // namespace

bool listArchive(std::istream& stream, std::vector<ListedEntry>& entries) {
    const Reader reader(stream);
    return reader.isGood() && listLevel(reader, reader.top(), "", 0, entries);
}

}  // namespace cinder::archive
