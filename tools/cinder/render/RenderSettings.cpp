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
    edits[setting->id] = setting->value;
}

void RenderSettings::setFromFile(const std::filesystem::path& file) {
    TextFault fault;
    const auto preset = readPresetText(readWhole(file), tree, fault);
    if (!preset) throw errorInLine(file, fault.line, fault.what);
    for (const PresetSetting& setting : preset->settings)
        edits[setting.id] = setting.value;
}

void RenderSettings::apply(GenericParameterOwner& owner) const {
    owner.beginUpdate();
    for (const auto& [id, value] : edits)
        owner.parameter(id)->setValue(value, 0);
    owner.endUpdate();
}

std::string RenderSettings::text(const std::vector<float>& before) const {
    std::string lines, line;
    for (const auto& [id, value] : edits) {
        if (value == before.at(static_cast<std::size_t>(id))) continue;
        const AbstractPluginParameter& parameter = *tree.parameter(id);
        if (!line.empty()) line += ", ";
        if (line.size() > lineWidth) {
            lines += line + '\n';
            line.clear();
        }
        line += parameter.getName() + ' ' + parameter.text(value);
    }
    return lines + line;
}

}  // namespace cinder
