#include "presets/resources/Resources.h"

#include "presets/resources/EmbeddedFiles.h"
#include "state/MemoryStream.h"

#include <algorithm>

namespace cinder {

namespace {

char capital(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

const EmbeddedFile* find(std::string_view name) {
    name = name.substr(0, name.rfind('.'));
    for (const EmbeddedFile& file : embeddedFiles())
        if (std::ranges::equal(name, std::string_view(file.name), {}, capital)) return &file;
    return nullptr;
}

}  // namespace

bool resourceExists(std::string_view name) {
    return find(name) != nullptr;
}

std::string_view resourceBytes(std::string_view name) {
    const EmbeddedFile* const file = find(name);
    if (!file) throw EResource("Resource not found");
    // Reading bytes as characters is the one reinterpretation that is always allowed.
    return {reinterpret_cast<const char*>(file->bytes), file->size};
}

std::unique_ptr<std::istream> openResource(std::string_view name) {
    return std::make_unique<MemoryStream>(resourceBytes(name));
}

}  // namespace cinder
