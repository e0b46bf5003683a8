#pragma once

#include "params/tree/StandaloneParameters.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace cinder {

struct PresetSetting;

/// What the command sets, over whatever the instance starts from.
/// State   the values, by id; of two texts for a parameter the last one counts. And a tree of its
/// own, all
///         at default, to look names and texts up
class RenderSettings {
public:
    /// "Band 2 Drive=70%": name or id, and what a user would type there.
    /// Errors  UsageError: no name, no such parameter, no value of it
    void set(std::string_view text);
    /// A preset's text: one such assignment in a line, and fields that only say what it is.
    /// Errors  UserError, with file and line
    void setFromFile(const std::filesystem::path& file);

    const StandaloneParameters& getTree() const { return tree; }
    void apply(GenericParameterOwner& owner) const;
    /// "Band 2 Drive 70.00%, Mix 50%": what differs from the values given, broken into lines.
    std::string text(const std::vector<float>& before) const;

private:
    StandaloneParameters tree;
    std::map<int, float> edits;
};

}  // namespace cinder
