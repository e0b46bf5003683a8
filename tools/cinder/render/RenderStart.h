#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace cinder {

class DirectPluginAdapter;
class RenderSettings;

/// What an instance is before the command's own settings. Without a preset or a state everything is
/// at its default, whatever the default preset of this user is, so that a command means the same
/// everywhere.
struct RenderStart {
    std::optional<std::string> preset;           ///< a name in the preset folder, or a file
    std::optional<std::filesystem::path> state;  ///< as `writeState` has left it

    /// What to save of the instance, once the rendering is done.
    struct Saved {
        std::optional<std::filesystem::path> preset, state;
    };

    /// Answers with the values of all parameters.
    /// Errors  UserError: no such preset or file, or none that the product takes as it is
    std::vector<float> load(DirectPluginAdapter& instance, const RenderSettings& settings) const;
};

/// What an instance is now, kept in memory to be put into files later.
class RenderSnapshot {
public:
    RenderSnapshot(const DirectPluginAdapter& instance, const RenderSettings& settings);

    /// Errors  UserError, UsageError: what can't be written; what was there is still there
    void save(const RenderStart::Saved& files) const;

private:
    const RenderSettings& settings;
    std::vector<float> values;
    std::string state;
};

}  // namespace cinder
