#pragma once

namespace CLI {
class App;
}

namespace cinder {

/// `cinder plot KIND ... OUT`: a picture of a style, a filter, the band split and the like.
void addPlotCommand(CLI::App& program);

}  // namespace cinder
