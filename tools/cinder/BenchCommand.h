#pragma once

namespace CLI {
class App;
}

namespace cinder {

/// `cinder bench`: what the product costs, state by state.
void addBenchCommand(CLI::App& program);

}  // namespace cinder
