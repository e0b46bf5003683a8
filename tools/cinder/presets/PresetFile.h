#pragma once

#include "presets/format/PresetText.h"

#include <filesystem>
#include <string>
#include <vector>

namespace cinder {

class StandaloneParameters;
struct ComponentKind;

/// A file that says where parameters stand, whatever its format.
struct PresetFile {
    std::vector<float> values;  ///< of all parameters, as a new instance has them afterwards
    PresetHead head;            ///< what a text says; of a preset of old, the format it had
    const ComponentKind* component = nullptr;  ///< null: it covers all parameters
    bool isText = false;
    bool isState = false;
    std::string remark;  ///< what it is, for whoever looks at it: "a preset of version 2"
};

/// Reads a preset, a component preset, a text, or the state of an instance; the ending says which,
/// or, where it says nothing, what the file begins with.
/// Errors  UserError: the file can't be read, is another kind than its ending says, is of a version
///         that we don't know, or ends before its values do
PresetFile readPresetFile(const std::filesystem::path& path, const StandaloneParameters& tree);

/// A name under which what holds all parameters can be written: .knp or .txt.
bool canHoldPreset(const std::filesystem::path& path);

/// Writes what a file holds in the format that the ending of `path` says: a preset, of the present
/// version or of that which a text asks for; a component preset; or a text.
/// Errors  UsageError: no such ending, or a component becomes something else. UserError: what can't
///         be held, what can't be written; what was there is still there
void writePresetFile(const std::filesystem::path& path, const PresetFile& file,
                     const StandaloneParameters& tree);

}  // namespace cinder
