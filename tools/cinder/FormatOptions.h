#pragma once

#include "cinder/vocabulary/Listing.h"

#include <memory>

namespace CLI {
class App;
}

namespace cinder {

/// --csv and --json of a command that prints a list.
struct FormatOptions {
    bool csv = false;
    bool json = false;

    ListFormat format() const {
        return csv ? ListFormat::Csv : json ? ListFormat::Json : ListFormat::Table;
    }
};

std::shared_ptr<FormatOptions> addFormatOptions(CLI::App& command);

}  // namespace cinder
