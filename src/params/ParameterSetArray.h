#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "params/AbstractParameterSetArray.h"

namespace cinder {

/// Owned sets, counted from 0.
template <typename T>
class OwnedParameterSets {
public:
    /// `makeSet(i)` makes set i, and is called in this order.
    template <typename MakeSet>
    OwnedParameterSets(int count, const MakeSet& makeSet) {
        sets.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            sets.push_back(makeSet(i));
    }
    /// What was made last goes first.
    ~OwnedParameterSets() {
        while (!sets.empty())
            sets.pop_back();
    }
    OwnedParameterSets(const OwnedParameterSets&) = delete;
    OwnedParameterSets& operator=(const OwnedParameterSets&) = delete;

    int size() const { return static_cast<int>(sets.size()); }
    T* at(int index) const {
        return index >= 0 && index < size() ? sets[static_cast<std::size_t>(index)].get() : nullptr;
    }

private:
    std::vector<std::unique_ptr<T>> sets;
};

/// A plain array of sets.
template <typename T>
class ParameterSetArray : public AbstractParameterSetArray {
public:
    /// `makeSet(i)` gives the set i as a std::unique_ptr<T>.
    template <typename MakeSet>
    ParameterSetArray(int count, const MakeSet& makeSet) : sets(count, makeSet) {}

    int setCount() const override { return sets.size(); }
    T* set(int index) const override { return sets.at(index); }

private:
    OwnedParameterSets<T> sets;
};

}  // namespace cinder
