#pragma once

#include <istream>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace cinder {

/// A resource that is not there. Caught where a command, a load or a window begins.
class EResource : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Data files that travel inside the program: the factory archive and the preset maps. A name is
/// taken in any case, and with or without its file's ending: "PresetMap_KCnd_1.knpresetmap" is
/// PRESETMAP_KCND_1.
/// Shape   as many bytes as the file had; they live as long as the program
/// Errors  EResource("Resource not found")
/// [any] but the audio thread
bool resourceExists(std::string_view name);
std::string_view resourceBytes(std::string_view name);
std::unique_ptr<std::istream> openResource(std::string_view name);

}  // namespace cinder
