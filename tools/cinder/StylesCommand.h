#pragma once

namespace CLI {
class App;
}

namespace cinder {

/// `cinder styles`: the table of what each style does to a tone.
void addStylesCommand(CLI::App& program);

}  // namespace cinder
