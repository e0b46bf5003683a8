#include "cinder/presets/PresetFile.h"

#include "cinder/UsageError.h"
#include "cinder/render/TextFile.h"
#include "core/platform/WholeFile.h"
#include "params/NumberText.h"
#include "params/tree/StandaloneParameters.h"
#include "presets/format/ComponentKind.h"
#include "presets/format/PresetContent.h"
#include "presets/format/PresetConversion.h"
#include "state/BinaryFile.h"
#include "state/MemoryStream.h"
#include "state/chunks/StateContent.h"
#include "state/chunks/StateSections.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <string_view>

namespace cinder {

namespace {

using Path = std::filesystem::path;

constexpr std::string_view presetEnding = ".knp";
constexpr std::string_view textEnding = ".txt";

std::string endingOf(const Path& path) {
    return path.extension().string();
}

bool hasEnding(const Path& path, std::string_view ending) {
    return equalsIgnoringCase(endingOf(path), ending);
}

std::string valuesOf(std::int32_t version, std::size_t count) {
    return "version " + std::to_string(version) + " with " + std::to_string(count) + " values";
}

/// Values for which there is no parameter may be missing, as they are of no use to a load.
PresetContent readContent(const Path& path, std::string_view bytes, std::size_t maxValues) {
    BinaryResourceReader reader(bytes);
    auto content = readPresetContent(reader, presetMagic, maxValues);
    if (!content) throw UserError(quoted(path) + " is no preset of Cinder");
    if (!content->whole) throw UserError(quoted(path) + " ends before its values do");
    return std::move(*content);
}

PresetFile readPreset(const Path& path, std::string_view bytes, const StandaloneParameters& tree) {
    const PresetContent content =
        readContent(path, bytes, static_cast<std::size_t>(tree.parameterCount()));
    const std::size_t count = content.values.size();
    const auto layout = presetLayout(content.version);
    if (!layout)
        throw UserError(quoted(path) + " is of version " + std::to_string(content.version) +
                        ", and presets have versions 1 to " + std::to_string(presetVersion));
    const bool isOld = content.version != presetVersion;
    if (isOld && count != static_cast<std::size_t>(layout->count))
        throw UserError(quoted(path) + " is of " + valuesOf(content.version, count) +
                        ", and a preset of that version has " + std::to_string(layout->count) +
                        "; if it is a component, its ending must say so");
    PresetFile file;
    file.values = *presentValues(content, tree);
    if (isOld) file.head.format = content.version;
    file.remark = "a preset of " + valuesOf(content.version, count);
    return file;
}

PresetFile readComponent(const Path& path, std::string_view bytes, const ComponentKind& kind,
                         const StandaloneParameters& tree) {
    const PresetContent content = readContent(path, bytes, bytes.size());
    const auto wanted = static_cast<std::size_t>(kind.numValues);
    if (content.version != componentVersion || content.values.size() != wanted)
        throw UserError(quoted(path) + " is of " +
                        valuesOf(content.version, content.values.size()) + ", and a " +
                        std::string(kind.extension) + " file is of " +
                        valuesOf(componentVersion, wanted));
    PresetFile file;
    file.values = componentValues(content, kind, tree);
    file.component = &kind;
    file.remark = "a component preset, shown for " + std::string(kind.setName);
    return file;
}

PresetFile readText(const Path& path, std::string_view bytes, const StandaloneParameters& tree) {
    TextFault fault;
    auto text = readPresetText(bytes, tree, fault);
    if (!text) throw errorInLine(path, fault.line, fault.what);
    PresetFile file;
    file.values = text->values(tree);
    file.head = std::move(text->head);
    file.isText = true;
    file.remark = "a text";
    return file;
}

PresetFile readState(const Path& path, std::string_view bytes, const StandaloneParameters& tree) {
    MemoryStream stream(bytes);
    auto state =
        readStateContent(stream, presetMagic, static_cast<std::size_t>(tree.parameterCount()));
    if (!state) throw UserError(quoted(path) + " is no state of Cinder, or not a whole one");
    // A state goes by the present list, as a preset of today does.
    PresetFile file;
    file.values = *presentValues({presetVersion, std::move(state->values)}, tree);
    file.isState = true;
    const auto& [presetName, number, isAutoNamed, name] = state->instance;
    file.remark = "a state of instance " + std::to_string(number);
    if (!name.empty()) file.remark.append(" ").append(quoted(Path(name)));
    if (!presetName.empty()) file.remark.append(", preset ").append(quoted(Path(presetName)));
    if (state->isBypassed) file.remark += *state->isBypassed ? ", bypassed" : ", not bypassed";
    return file;
}

void write(const Path& path, std::string_view bytes) {
    if (!platform::writeWholeFile(path, bytes)) throw UserError("cannot write " + quoted(path));
}

std::string bytesOf(const PresetContent& content) {
    std::ostringstream stream;
    BinaryDataWriter writer(stream);
    writePresetContent(writer, presetMagic, content);
    return std::move(stream).str();
}

/// A text says in which version it is to be; what has been read from a preset of old is up to date.
std::int32_t versionToWrite(const PresetFile& file) {
    return file.isText ? file.head.format.value_or(presetVersion) : presetVersion;
}

[[noreturn]] void refuseMix(const Path& path, const PresetFile& file) {
    const std::string own(file.component ? file.component->extension : presetEnding);
    throw UsageError("cannot write " + quoted(path) + ": what holds " +
                     (file.component ? "a component" : "all parameters") +
                     " can become a text or a " + own + " file");
}

}  // namespace

PresetFile readPresetFile(const Path& path, const StandaloneParameters& tree) {
    const std::string bytes = readWhole(path);
    if (const ComponentKind* const kind = componentKindOf(endingOf(path)))
        return readComponent(path, bytes, *kind, tree);
    if (hasEnding(path, textEnding)) return readText(path, bytes, tree);
    if (hasEnding(path, presetEnding) || bytes.starts_with(presetMagic))
        return readPreset(path, bytes, tree);
    if (bytes.starts_with(parameterStateMagic)) return readState(path, bytes, tree);
    throw UserError(quoted(path) + " is no preset, component preset, state, or text that ends in " +
                    std::string(textEnding));
}

bool canHoldPreset(const Path& path) {
    return hasEnding(path, presetEnding) || hasEnding(path, textEnding);
}

void writePresetFile(const Path& path, const PresetFile& file, const StandaloneParameters& tree) {
    if (hasEnding(path, textEnding))
        return write(path, writePresetText(file.head, file.values, tree));
    const ComponentKind* const kind = componentKindOf(endingOf(path));
    if (!kind && !hasEnding(path, presetEnding))
        throw UsageError("cannot write " + quoted(path) +
                         ": the ending is .knp, .txt or that of a component preset: .band, .xlfo, "
                         ".eg, .ef or .midi");
    if (!file.isText && file.component != kind) refuseMix(path, file);
    std::string fault;
    std::optional<PresetContent> content;
    if (kind)
        content = componentContentOf(file.values, *kind, tree, fault);
    else
        content = contentOf(file.values, *presetLayout(versionToWrite(file)), tree, fault);
    if (!content) throw UserError("cannot write " + quoted(path) + ": " + fault);
    write(path, bytesOf(*content));
}

}  // namespace cinder
