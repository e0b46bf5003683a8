#include "cinder/StandardStreams.h"

#include "cinder/audio/UserError.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <initializer_list>
#include <iostream>

namespace cinder {

void secureStandardStreams() noexcept {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // Ascending: open() answers with the lowest number that is free, which is this one.
        if (::fcntl(descriptor, F_GETFD) == -1) ::open("/dev/null", O_RDWR);
    }
    ::signal(SIGPIPE, SIG_IGN);
}

void requirePrinted() {
    if (std::cout.flush()) return;
    pollfd output = {STDOUT_FILENO, 0, 0};
    const bool hasNoReader = ::poll(&output, 1, 0) > 0 && (output.revents & POLLERR) != 0;
    if (!hasNoReader) throw UserError("standard output could not be written");
}

}  // namespace cinder
