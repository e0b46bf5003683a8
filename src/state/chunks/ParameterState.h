#pragma once

#include <iosfwd>

namespace cinder {

class GenericParameterOwner;

/// The section of a state that holds the values of all parameters, in the order of their ids:
///
///     "KNBS"    version 1    count    count x float
///
/// The values are those of `value()`, a position for a stepped parameter. They are known by their
/// place alone: a list that is shorter than ours leaves the rest at default, a longer one is cut.

/// Whether the stream is good. [ui, host]
bool writeParameterState(std::ostream& stream, const GenericParameterOwner& owner);

struct ParameterStateResult {
    bool applied = false;  ///< the parameters have been set, well or not
    bool good = false;     ///< and nothing was wrong with the section
};

/// Sets all parameters, in one bracket that asks the host to look anew. The version is not looked
/// at, and a NaN changes nothing.
/// Errors  not applied: another magic, a count that can't be read or is below 0. Applied and not
///         good: the stream ends within the values; what it has is set, what it lacks is a 0 in
///         the parameter's range
/// [ui, host]
ParameterStateResult readParameterState(std::istream& stream, GenericParameterOwner& owner);

}  // namespace cinder
