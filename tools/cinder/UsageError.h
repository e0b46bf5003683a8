#pragma once

#include "cinder/audio/UserError.h"

namespace cinder {

/// What was typed makes no sense, whatever the files hold. Ends the program with status 2.
class UsageError : public UserError {
public:
    using UserError::UserError;
};

}  // namespace cinder
