#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>

namespace cinder::wave {

/// Zeroed samples at an aligned address, padded to whole vectors.
/// Shape   `size` samples may be used; the storage reaches on to a multiple of 32 bytes, so that a
///         loop over groups of four may touch what lies behind the last one
/// Errors  allocation failure throws
template <typename T>
class AlignedBuffer {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    /// A cache line: no vector of any instruction set is split by one.
    static constexpr std::size_t alignment = 64;
    static constexpr std::size_t granularity = 32;

    AlignedBuffer() = default;
    explicit AlignedBuffer(std::int32_t n) { resize(n); }
    ~AlignedBuffer() { release(storage); }
    AlignedBuffer(const AlignedBuffer&) = delete;
    AlignedBuffer& operator=(const AlignedBuffer&) = delete;

    T* data() { return storage; }
    const T* data() const { return storage; }
    std::int32_t size() const { return count; }
    T& operator[](std::ptrdiff_t i) { return storage[i]; }
    const T& operator[](std::ptrdiff_t i) const { return storage[i]; }

    /// Keeps what fits; what is new is zero. A size of 0 or less frees the storage.
    void resize(std::int32_t n) {
        if (n == count) return;
        T* fresh = nullptr;
        if (n > 0) {
            const std::size_t bytes = (static_cast<std::size_t>(n) * sizeof(T) + granularity - 1) /
                                      granularity * granularity;
            fresh = static_cast<T*>(::operator new (bytes, std::align_val_t{alignment}));
            std::fill_n(fresh, bytes / sizeof(T), T{});
            std::copy_n(storage, std::clamp(count, 0, n), fresh);
        }
        release(storage);
        storage = fresh;
        count = n;
    }

private:
    static void release(T* storage) { ::operator delete (storage, std::align_val_t{alignment}); }

    std::int32_t count = 0;
    T* storage = nullptr;
};

}  // namespace cinder::wave
