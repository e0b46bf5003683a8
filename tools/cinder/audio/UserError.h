#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace cinder {

/// What the person at the command line must know: one line that names the file and says what is
/// wrong with it. Thrown by everything in this folder, caught once, in main.
class UserError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A path as a message shows it: in quotes, and with '?' for what would break the line.
std::string quoted(const std::filesystem::path& path);

/// "cannot `action` 'path': what the system says about `errorNumber`".
UserError systemError(const std::string& action, const std::filesystem::path& path,
                      int errorNumber);

}  // namespace cinder
