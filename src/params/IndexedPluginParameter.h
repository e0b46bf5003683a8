#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "params/ChoiceNames.h"
#include "params/NumberText.h"
#include "params/ShortenName.h"
#include "params/TypedPluginParameter.h"

namespace cinder {

struct IndexRange {
    std::int32_t minimum = 0;
    std::int32_t maximum = 1;
    std::int32_t defaultValue = 0;
};

/// A stepped parameter: a position, which is a whole number within a range, and stands for a T
/// (int, bool or an enumeration). Host and interface see positions, the processing sees the T: the
/// same number, or the number that a table gives for the position.
///
/// All floats here are positions; one between two steps is cut to the one below.
template <typename T>
class IndexedPluginParameter : public TypedPluginParameter<T> {
public:
    IndexedPluginParameter(GenericParameterOwner* owner, std::string name, IndexRange range = {})
        : TypedPluginParameter<T>(owner, std::move(name), true) {
        setRange(range);
    }

    // Setting up, before anybody else knows of the parameter.

    /// The value becomes the default.
    void setRange(IndexRange newRange) {
        range = newRange;
        stored.store(std::clamp(range.defaultValue, range.minimum, range.maximum),
                     std::memory_order_relaxed);
    }
    /// "Off,On"; the first name is that of the minimum.
    void setNames(std::string_view commaSeparated) { names.setOwn(commaSeparated); }
    /// A list that outlives the parameter.
    void shareNames(const std::vector<std::string>* list) { names.share(list); }
    /// Position p stands for table[p - base], within the table. Not owned.
    void setValueTable(std::span<const std::int32_t> table, std::int32_t base) {
        valueTable = table;
        valueTableBase = base;
    }

    float normalize(float value) const noexcept CINDER_REALTIME override {
        const std::int32_t steps = range.maximum - range.minimum;
        return steps > 0
                   ? static_cast<float>(position(value) - range.minimum) / static_cast<float>(steps)
                   : 0.0f;
    }
    /// Rounds to the nearest step.
    float denormalize(float normalised) const noexcept CINDER_REALTIME override {
        const auto steps = static_cast<double>(range.maximum - range.minimum);
        if (!(normalised > 0.0f) || steps == 0.0) return minimum();
        const double step = (0.5 / steps + static_cast<double>(normalised)) * steps;
        return static_cast<float>(static_cast<std::int32_t>(std::min(step, steps)) + range.minimum);
    }
    float defaultValue() const noexcept CINDER_REALTIME override {
        return static_cast<float>(range.defaultValue);
    }
    float maximum() const noexcept CINDER_REALTIME override {
        return static_cast<float>(range.maximum);
    }
    float minimum() const noexcept CINDER_REALTIME override {
        return static_cast<float>(range.minimum);
    }
    float value() const noexcept CINDER_REALTIME override {
        return static_cast<float>(stored.load(std::memory_order_relaxed));
    }
    T targetValue(float value) const noexcept CINDER_REALTIME override {
        return static_cast<T>(tabled(position(value)));
    }
    T typedValue() const noexcept CINDER_REALTIME {
        return static_cast<T>(tabled(stored.load(std::memory_order_relaxed)));
    }
    /// The position that stands for a value; the first one where none does.
    std::int32_t positionOf(T value) const noexcept CINDER_REALTIME {
        const auto number = static_cast<std::int32_t>(value);
        if (valueTable.empty()) return number;
        const std::int32_t place = placeInTable(number);
        return valueTableBase + std::max(place, 0);
    }

    bool storeValue(float newValue) noexcept CINDER_REALTIME override {
        if (newValue != newValue) return false;
        const std::int32_t next = position(newValue);
        if (next == stored.load(std::memory_order_relaxed)) return false;
        stored.store(next, std::memory_order_relaxed);
        return true;
    }

    /// The name of the position, or the number that it stands for.
    std::string text(float value) const override {
        const std::int32_t at = position(value);
        const std::string* const name = names.at(at - range.minimum);
        return name ? *name : std::to_string(tabled(at));
    }
    std::string shortText(float value, int maxChars) const override {
        return shortenName(text(value), maxChars);
    }
    /// A name, whatever its case, or the number that `text` would give, and nothing behind it.
    bool parseText(std::string_view text, float& out) const override {
        out = value();
        std::int32_t found = 0;
        const int place = names.find(text);
        if (place >= 0)
            found = range.minimum + place;
        else if (!readWholeNumber(text, found) || !untable(found))
            return false;
        if (found < range.minimum || found > range.maximum) return false;
        out = static_cast<float>(found);
        return true;
    }
    bool hasNumericText() const override { return names.empty(); }
    const ChoiceNames& getNames() const { return names; }

private:
    /// Clamped before it is cut, so that no value is too large for a whole number. A NaN ends at
    /// the minimum.
    std::int32_t position(float value) const noexcept CINDER_REALTIME {
        if (!(value > minimum())) return range.minimum;
        return value >= maximum() ? range.maximum : static_cast<std::int32_t>(value);
    }
    std::int32_t tabled(std::int32_t position) const noexcept CINDER_REALTIME {
        if (valueTable.empty()) return position;
        const auto last = static_cast<std::int32_t>(valueTable.size()) - 1;
        return valueTable[static_cast<std::size_t>(std::clamp(position - valueTableBase, 0, last))];
    }
    std::int32_t placeInTable(std::int32_t number) const noexcept CINDER_REALTIME {
        const auto found = std::find(valueTable.begin(), valueTable.end(), number);
        return found == valueTable.end() ? -1
                                         : static_cast<std::int32_t>(found - valueTable.begin());
    }
    /// From a number that the table holds to its position.
    bool untable(std::int32_t& number) const {
        if (valueTable.empty()) return true;
        const std::int32_t place = placeInTable(number);
        number = valueTableBase + place;
        return place >= 0;
    }

    IndexRange range;
    std::span<const std::int32_t> valueTable;  // empty: a position stands for itself
    std::int32_t valueTableBase = 0;           // position of the first entry
    std::atomic<std::int32_t> stored{0};
    ChoiceNames names;
};

}  // namespace cinder
