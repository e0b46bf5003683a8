#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cinder {

class AbstractPluginParameter;
class GenericParameterOwner;

// Parameters and their values as people write them into files and on the command line. All [ui].

/// The parameter of that name, in upper or lower case and with dashes or blanks, or of that id.
/// Null where there is none.
AbstractPluginParameter* parameterNamed(const GenericParameterOwner& owner, std::string_view name);
/// What to say where there is none; it names those that are spelt alike.
std::string noSuchParameter(const GenericParameterOwner& owner, std::string_view name);

/// The value that a text stands for, within the range of what is stored:
///
///     what a user might type     "70%", "A4", "Warm Tube"
///     how an end of it reads     "-INF dB"
///     "stored 0.7"               the number itself, for what no other text can say
///
/// Errors  none: no text of a value
std::optional<float> valueOfText(const AbstractPluginParameter& parameter, std::string_view text);
std::string noSuchValue(const AbstractPluginParameter& parameter, std::string_view text);

/// The text that is read back as that value, to the bit: how it reads; or with as many digits as
/// it takes; or, where a taper swallows the last ones, as "stored" and a number.
/// Range   within that of the parameter, whole for a stepped one, not -0
std::string exactText(const AbstractPluginParameter& parameter, float value);

/// What a parameter has once it was at its default and is then set to `value`: clamped, cut to a
/// whole number where it is stepped, and the default for a NaN and for what is as good as the
/// default. A zero has no sign.
float settledValue(const AbstractPluginParameter& parameter, float value);

}  // namespace cinder
