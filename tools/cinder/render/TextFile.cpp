#include "cinder/render/TextFile.h"

#include "cinder/audio/FileDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

namespace cinder {

namespace {

constexpr std::size_t mostBytes = std::size_t{64} << 20;
constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

}  // namespace

std::string readWhole(const std::filesystem::path& file) {
    const FileDescriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (descriptor.get() < 0) throw systemError("read", file, errno);
    std::string bytes;
    char piece[16384];
    for (;;) {
        const ssize_t got = ::read(descriptor.get(), piece, sizeof piece);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) throw systemError("read", file, errno);
        if (got == 0) return bytes;
        bytes.append(piece, static_cast<std::size_t>(got));
        if (bytes.size() > mostBytes)
            throw UserError("cannot read " + quoted(file) + ": it is larger than 64 MiB");
    }
}

std::vector<TextLine> linesOf(std::string_view text) {
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    std::vector<TextLine> lines;
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = withoutBlanks(text.substr(0, end));
        if (!line.empty() && line.front() != '#') lines.push_back({number, line});
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

UserError errorInLine(const std::filesystem::path& file, int line, const std::string& what) {
    return UserError(quoted(file) + ", line " + std::to_string(line) + ": " + what);
}

}  // namespace cinder
