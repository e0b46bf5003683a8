#pragma once

#include <filesystem>

// The folders of the user who runs us. A value in the environment that is no absolute path counts
// as not set. Each is empty where there is no home folder either. [any] but the audio thread

namespace cinder::platform {

/// $HOME, or what the system has on record.
std::filesystem::path homeFolder();
/// $XDG_CONFIG_HOME, or .config in the home folder.
std::filesystem::path configFolder();
/// $XDG_DATA_HOME, or .local/share in the home folder.
std::filesystem::path dataFolder();

}  // namespace cinder::platform
