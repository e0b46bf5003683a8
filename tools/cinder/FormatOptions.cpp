#include "cinder/FormatOptions.h"

#include <CLI/CLI.hpp>

namespace cinder {

std::shared_ptr<FormatOptions> addFormatOptions(CLI::App& command) {
    const auto options = std::make_shared<FormatOptions>();
    CLI::Option* const csv =
        command.add_flag("--csv", options->csv, "Commas between, a line a row, titles first");
    command.add_flag("--json", options->json, "A list of objects")->excludes(csv);
    return options;
}

}  // namespace cinder
