#include "cinder/audio/UserError.h"

#include <algorithm>
#include <system_error>

namespace cinder {

std::string quoted(const std::filesystem::path& path) {
    std::string text = path.string();
    const auto isControl = [](char c) { return (c >= 0 && c < ' ') || c == '\x7f'; };
    std::replace_if(text.begin(), text.end(), isControl, '?');
    return "'" + text + "'";
}

UserError systemError(const std::string& action, const std::filesystem::path& path,
                      int errorNumber) {
    return UserError("cannot " + action + " " + quoted(path) + ": " +
                     std::generic_category().message(errorNumber));
}

}  // namespace cinder
