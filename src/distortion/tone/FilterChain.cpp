#include "distortion/tone/FilterChain.h"

#include <algorithm>
#include <cmath>

namespace cinder {

FilterChain::FilterChain(wave::Environment* environment, wave::Producer* input, int capacity)
    : input(input) {
    for (int i = 0; i < capacity; ++i) {
        filters.push_back(std::make_unique<EQFilter>(environment));
        filters.back()->setInput(i == 0 ? input : filters[static_cast<std::size_t>(i) - 1].get());
    }
}

void FilterChain::addFilter(const FilterRow& row) noexcept CINDER_REALTIME {
    if (count == getCapacity()) return;
    constexpr float jump = 0.0f;
    EQFilter& filter = (*this)[count++];
    filter.frequency.getParameter().setValue(std::log2(row.hz), jump);
    filter.gain.getParameter().setValue(row.gainDb, jump);
    filter.q.getParameter().setValue(qForShape(row.shape, row.q), jump);
    filter.shape = row.shape;
    filter.slope = row.slope;
    filter.reset();
}

void FilterChain::link(FilterChain& other) {
    const int numPairs = std::min(getCapacity(), other.getCapacity());
    for (int i = 0; i < numPairs; ++i) {
        (*this)[i].setPartner(&other[i]);
        (*this)[i].link(EQFilter::LinkMode::Shared);
    }
}

}  // namespace cinder
