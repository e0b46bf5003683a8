#pragma once

namespace CLI {
class App;
}

namespace cinder {

void addPresetsCommand(CLI::App& program);

}  // namespace cinder
