#pragma once

namespace CLI {
class App;
}

namespace cinder {

/// Preset files as text: `cinder preset show`, `diff` and `convert`.
void addPresetCommand(CLI::App& program);

}  // namespace cinder
