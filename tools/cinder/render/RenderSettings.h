#pragma once

#include "params/tree/StandaloneParameters.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace cinder {

struct PresetSetting;

/// Where the parameters stand when the music starts.
/// State   a tree of its own, all at default until something is set; of two texts for a parameter
///         the last one counts
class RenderSettings {
public:
    /// "Band 2 Drive=70%": name or id, and what a user would type there.
    /// Errors  UsageError: no name, no such parameter, no value of it
    void set(std::string_view text);
    /// A preset's text: one such assignment in a line, and fields that only say what it is.
    /// Errors  UserError, with file and line
    void setFromFile(const std::filesystem::path& file);

    const StandaloneParameters& getTree() const { return tree; }
    /// "Band 2 Drive 70.00%, Mix 50%": what differs from the default, broken into lines.
    std::string text() const;

private:
    void apply(const PresetSetting& setting);

    StandaloneParameters tree;
};

}  // namespace cinder
