#include "cinder/render/RenderSettings.h"

#include "cinder/UsageError.h"
#include "cinder/render/TextFile.h"
#include "presets/format/PresetText.h"

namespace cinder {

namespace {

constexpr std::size_t lineWidth = 72;

}  // namespace

void RenderSettings::set(std::string_view text) {
    std::string fault;
    const auto setting = readSetting(text, tree, fault);
    if (!setting) throw UsageError(fault);
    apply(*setting);
}

void RenderSettings::setFromFile(const std::filesystem::path& file) {
    TextFault fault;
    const auto preset = readPresetText(readWhole(file), tree, fault);
    if (!preset) throw errorInLine(file, fault.line, fault.what);
    for (const PresetSetting& setting : preset->settings)
        apply(setting);
}

void RenderSettings::apply(const PresetSetting& setting) {
    tree.parameter(setting.id)->setValue(setting.value, AbstractPluginParameter::hostKnows);
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
