#pragma once

namespace CLI {
class App;
}

namespace cinder {

/// The controller map: `cinder controllers show`, `set` and `clear`.
void addControllersCommand(CLI::App& program);

}  // namespace cinder
