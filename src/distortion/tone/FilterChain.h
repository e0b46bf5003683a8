#pragma once

#include <memory>
#include <vector>

#include "distortion/tone/FilterRow.h"
#include "dsp/filters/EQFilter.h"

namespace cinder {

/// A row of equalisers of which the first few are in use, one behind the other.
/// Shape   one channel; `capacity` filters are there from the start, and what goes beyond them is
///         left out. With none in use the output is the input itself
/// State   that of the filters; those out of use keep theirs, and are reset when they come back
class FilterChain {
public:
    FilterChain(wave::Environment* environment, wave::Producer* input, int capacity);

    /// Takes all filters out of use. [audio]
    void clear() noexcept CINDER_REALTIME { count = 0; }
    /// Puts one more to use, with settings that jump. [audio]
    void addFilter(const FilterRow& row) noexcept CINDER_REALTIME;
    /// Lets the filters that stand in the same place in both chains run as pairs with one set of
    /// coefficients. Both chains are filled alike from then on.
    void link(FilterChain& other);

    int getCount() const { return count; }
    int getCapacity() const { return static_cast<int>(filters.size()); }
    EQFilter& operator[](int index) { return *filters[static_cast<std::size_t>(index)]; }
    wave::Producer& getOutput() noexcept CINDER_REALTIME {
        return count > 0 ? (*this)[count - 1] : *input;
    }

private:
    wave::Producer* input;  // not owned
    std::vector<std::unique_ptr<EQFilter>> filters;
    int count = 0;
};

}  // namespace cinder
