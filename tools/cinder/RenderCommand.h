#pragma once

namespace CLI {
class App;
}

namespace cinder {

/// `cinder render IN OUT`: audio from a file through the processor to another file.
void addRenderCommand(CLI::App& program);

}  // namespace cinder
