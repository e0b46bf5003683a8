#include "cinder/render/RenderSettings.h"

#include "cinder/UsageError.h"
#include "cinder/render/TextFile.h"
#include "cinder/vocabulary/ParameterList.h"

namespace cinder {

namespace {

constexpr std::size_t lineWidth = 72;

}  // namespace

void RenderSettings::set(std::string_view text) {
    const auto equals = text.find('=');
    const std::string name(withoutBlanks(text.substr(0, equals)));
    if (equals == std::string_view::npos || name.empty())
        throw UsageError("a parameter is set by NAME=VALUE, not \"" + std::string(text) + "\"");
    AbstractPluginParameter& parameter = findParameter(tree, name);
    const std::string value(withoutBlanks(text.substr(equals + 1)));
    parameter.setValue(valueOf(parameter, value), AbstractPluginParameter::hostKnows);
}

void RenderSettings::setFromFile(const std::filesystem::path& file) {
    const std::string text = readWhole(file);
    for (const auto& [number, line] : linesOf(text)) {
        try {
            set(line);
        } catch (const UsageError& error) {
            throw errorInLine(file, number, error.what());
        }
    }
}

std::string RenderSettings::text() const {
    std::string lines, line;
    for (int id = 0; id < tree.parameterCount(); ++id) {
        const AbstractPluginParameter& parameter = *tree.parameter(id);
        const float value = parameter.value();
        if (value == parameter.defaultValue()) continue;
        if (!line.empty()) line += ", ";
        if (line.size() > lineWidth) {
            lines += line + '\n';
            line.clear();
        }
        line += parameter.getName() + ' ' + parameter.text(value);
    }
    return lines.empty() && line.empty() ? "all parameters at their defaults" : lines + line;
}

}  // namespace cinder
