#include "cinder/render/TextFile.h"

#include "cinder/audio/FileDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace cinder {

namespace {

constexpr std::size_t mostBytes = std::size_t{64} << 20;

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

UserError errorInLine(const std::filesystem::path& file, int line, const std::string& what) {
    return UserError(quoted(file) + ", line " + std::to_string(line) + ": " + what);
}

}  // namespace cinder
