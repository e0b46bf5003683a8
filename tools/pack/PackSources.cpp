#include "pack/PackSources.h"

#include "core/platform/WholeFile.h"
#include "params/tree/StandaloneParameters.h"
#include "presets/archive/ArchiveWriter.h"
#include "presets/format/ComponentKind.h"
#include "presets/format/PresetContent.h"
#include "presets/format/PresetConversion.h"
#include "presets/format/PresetMap.h"
#include "presets/format/PresetText.h"
#include "state/BinaryData.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <vector>

namespace cinder {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view productCode = "KCnd";
constexpr std::string_view sourceExtension = ".txt";
constexpr std::string_view presetExtension = ".knp";
constexpr std::size_t maxSourceBytes = std::size_t{1} << 20;

[[noreturn]] void refuse(const fs::path& file, const std::string& what, int line = 0) {
    throw std::runtime_error(file.string() + (line > 0 ? ":" + std::to_string(line) : "") + ": " +
                             what);
}

std::string fileOf(const PresetContent& content) {
    std::ostringstream stream;
    BinaryDataWriter writer(stream);
    writePresetContent(writer, productCode, content);
    return stream.str();
}

class Packer {
public:
    /// Packs all texts below the folder into one of the archive.
    void addTree(const fs::path& folder, const std::string& target, bool areComponents) {
        for (const fs::path& path : texts(folder)) {
            const std::string inner = path.lexically_relative(folder).parent_path().string();
            const ComponentKind* const kind = areComponents ? kindIn(inner, path) : nullptr;
            const std::string bytes = fileOf(contentOfText(path, kind));
            const std::string name =
                path.stem().string() + std::string(kind ? kind->extension : presetExtension);
            add(path, target + (inner.empty() ? "" : "/") + inner + "/" + name, bytes);
        }
    }

    std::string bytes() const { return writer.bytes(); }

private:
    /// Sorted, so that of several faults the same one is told each time.
    static std::vector<fs::path> texts(const fs::path& folder) {
        std::error_code failed;
        std::vector<fs::path> found;
        fs::recursive_directory_iterator entry(folder, failed), end;
        for (; !failed && entry != end; entry.increment(failed)) {
            const bool isHidden = entry->path().filename().string().starts_with('.');
            if (isHidden && entry->is_directory()) entry.disable_recursion_pending();
            if (isHidden || entry->is_directory()) continue;
            if (entry->path().extension() != sourceExtension)
                refuse(entry->path(), "no text of a preset; those end in .txt");
            found.push_back(entry->path());
        }
        if (failed) refuse(folder, failed.message());
        std::ranges::sort(found);
        return found;
    }

    static const ComponentKind* kindIn(const std::string& folder, const fs::path& path) {
        for (const ComponentKind& kind : componentKinds())
            if (kind.folder == folder) return &kind;
        refuse(path, "lies in a folder that is no kind of component");
    }

    PresetContent contentOfText(const fs::path& path, const ComponentKind* kind) const {
        const auto bytes = platform::readWholeFile(path, maxSourceBytes);
        if (!bytes) refuse(path, "can't be read");
        TextFault fault;
        const auto text = readPresetText(*bytes, parameters, fault);
        if (!text) refuse(path, fault.what, fault.line);
        std::string what;
        const auto content =
            kind ? componentContent(*text, *kind, what) : presetContent(*text, what);
        if (!content) refuse(path, what);
        return *content;
    }

    std::optional<PresetContent> presetContent(const PresetText& text, std::string& fault) const {
        const std::int32_t version = text.head.format.value_or(presetVersion);
        const auto layout = factoryLayout(version);
        if (layout) return contentOf(text.values(parameters), *layout, parameters, fault);
        fault = "there is no version " + std::to_string(version);
        return {};
    }

    std::optional<PresetContent> componentContent(const PresetText& text, const ComponentKind& kind,
                                                  std::string& fault) const {
        if (!text.head.format)
            return componentContentOf(text.values(parameters), kind, parameters, fault);
        fault = "components have no versions";
        return {};
    }

    void add(const fs::path& source, const std::string& target, const std::string& bytes) {
        try {
            writer.addFile(target, bytes);
        } catch (const std::invalid_argument& error) {
            refuse(source, std::string("can't go into the archive: ") + error.what());
        }
    }

    StandaloneParameters parameters;
    ArchiveWriter writer;
};

}  // namespace

std::string packPresetSources(const fs::path& sources) {
    Packer packer;
    packer.addTree(sources / "components", "ApplicationData/Component Presets", true);
    packer.addTree(sources / "factory", "FactoryPresets", false);
    return packer.bytes();
}

std::string packPresetMap(int version) {
    const auto map = presetMapOf(version);
    if (!map) throw std::runtime_error("there is no map of version " + std::to_string(version));
    std::ostringstream stream;
    BinaryDataWriter writer(stream);
    writePresetMap(writer, *map);
    return stream.str();
}

std::string presetMapFileName(int version) {
    return presetMapName(productCode, version) + ".knpresetmap";
}

}  // namespace cinder
