#include "presets/format/PresetText.h"

#include <algorithm>
#include <cstddef>

#include "params/AbstractPluginParameter.h"
#include "params/NumberText.h"
#include "presets/format/ParameterText.h"
#include "presets/format/PresetContent.h"
#include "presets/format/PresetConversion.h"
#include "presets/format/TextLines.h"

namespace cinder {

namespace {

constexpr std::string_view formatField = "Format";
constexpr std::string_view loudnessField = "Loudness";
constexpr std::string_view freeLoudness = "free";

struct TextField {
    std::string_view word;
    std::string PresetHead::*text;
};
/// All but Format, in the order in which they are written.
constexpr TextField textFields[] = {
    {"Intent", &PresetHead::intent},
    {"Tags", &PresetHead::tags},
    {loudnessField, &PresetHead::loudness},
    {"Audio", &PresetHead::audio},
};

/// "Tags" of "Tags: drums"; empty for a line that isn't a field. No parameter's name has a colon.
std::string_view fieldWord(std::string_view line) {
    const std::string_view word = line.substr(0, std::min(line.find(':'), line.size()));
    const bool isWord = std::ranges::all_of(word, [](char c) {
        const char upper = upperCase(c);
        return upper >= 'A' && upper <= 'Z';
    });
    return isWord && word.size() < line.size() ? word : std::string_view();
}

/// Answers with what is wrong, or with nothing.
std::string setFormat(PresetHead& head, std::string_view text) {
    std::int32_t format = 0;
    if (head.format) return "there is a second Format";
    if (!readWholeNumber(text, format) || !presetLayout(format))
        return std::string("\"").append(text) + "\" is no version of a preset; there are 1 to " +
               std::to_string(presetVersion);
    head.format = format;
    return {};
}

std::string setField(PresetHead& head, std::string_view word, std::string_view text) {
    if (text.empty()) return std::string(word) + " says nothing";
    if (word == formatField) return setFormat(head, text);
    const auto* const field = std::ranges::find(textFields, word, &TextField::word);
    if (field == std::end(textFields))
        return "there is no field \"" + std::string(word) +
               "\"; there are Intent, Tags, Format, Loudness and Audio";
    if (!(head.*field->text).empty()) return "there is a second " + std::string(word);
    if (word == loudnessField && text != freeLoudness)
        return "Loudness is free or not there, and not \"" + std::string(text) + "\"";
    head.*field->text = text;
    return {};
}

std::string takeLine(PresetText& preset, std::string_view line,
                     const GenericParameterOwner& parameters) {
    if (const std::string_view word = fieldWord(line); !word.empty()) {
        if (!preset.settings.empty())
            return std::string(word) + " stands behind a parameter; fields come first";
        return setField(preset.head, word, withoutBlanks(line.substr(word.size() + 1)));
    }
    std::string fault;
    if (const auto setting = readSetting(line, parameters, fault))
        preset.settings.push_back(*setting);
    return fault;
}

}  // namespace

std::vector<float> PresetText::values(const GenericParameterOwner& parameters) const {
    std::vector<float> values = defaultValues(parameters);
    for (const PresetSetting& setting : settings)
        values[static_cast<std::size_t>(setting.id)] = setting.value;
    return values;
}

std::optional<PresetText> readPresetText(std::string_view text,
                                         const GenericParameterOwner& parameters,
                                         TextFault& fault) {
    PresetText preset;
    for (const auto& [number, line] : linesOf(text)) {
        const std::size_t settingsBefore = preset.settings.size();
        fault = {number, takeLine(preset, line, parameters)};
        if (!fault.what.empty()) return {};
        if (preset.settings.size() > settingsBefore) preset.settings.back().line = number;
    }
    return preset;
}

std::optional<PresetSetting> readSetting(std::string_view text,
                                         const GenericParameterOwner& parameters,
                                         std::string& fault) {
    const auto equals = text.find('=');
    const std::string_view name = withoutBlanks(text.substr(0, equals));
    if (equals == std::string_view::npos || name.empty()) {
        fault = "a parameter is set by NAME=VALUE, not \"" + std::string(text) + "\"";
        return {};
    }
    const AbstractPluginParameter* const parameter = parameterNamed(parameters, name);
    if (!parameter) {
        fault = noSuchParameter(parameters, name);
        return {};
    }
    const std::string_view typed = withoutBlanks(text.substr(equals + 1));
    const auto value = valueOfText(*parameter, typed);
    if (!value) {
        fault = noSuchValue(*parameter, typed);
        return {};
    }
    return PresetSetting{parameter->getId(), *value};
}

std::string writePresetText(const PresetHead& head, const std::vector<float>& values,
                            const GenericParameterOwner& parameters) {
    std::string text;
    for (const auto& [word, field] : textFields)
        if (!(head.*field).empty()) text += std::string(word) + ": " + head.*field + '\n';
    if (head.format) text += std::string(formatField) + ": " + std::to_string(*head.format) + '\n';
    int group = -1;
    for (std::size_t id = 0; id < values.size(); ++id) {
        const AbstractPluginParameter& parameter = *parameters.parameter(static_cast<int>(id));
        if (values[id] == parameter.defaultValue()) continue;
        if (!text.empty() && parameter.getGroup() != group) text += '\n';
        group = parameter.getGroup();
        text += parameter.getName() + " = " + exactText(parameter, values[id]) + '\n';
    }
    return text;
}

}  // namespace cinder
