#pragma once

#include <unistd.h>

#include <utility>

namespace cinder {

/// A descriptor that closes itself.
class FileDescriptor {
public:
    explicit FileDescriptor(int number = -1) noexcept : number(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }
    ~FileDescriptor() { close(); }

    int get() const noexcept { return number; }
    bool isOpen() const noexcept { return number >= 0; }

    /// False, with errno set, where the system only now finds that a write has failed.
    bool close() noexcept {
        const int closed = std::exchange(number, -1);
        return closed < 0 || ::close(closed) == 0;
    }

private:
    int number;
};

}  // namespace cinder
