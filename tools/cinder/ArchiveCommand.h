#pragma once

namespace CLI {
class App;
}

namespace cinder {

/// `cinder archive list|extract|pack`: the archive in which the factory presets travel.
void addArchiveCommand(CLI::App& program);

}  // namespace cinder
