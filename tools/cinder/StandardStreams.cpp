#include "cinder/StandardStreams.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <initializer_list>

namespace cinder {

void secureStandardStreams() noexcept {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // Ascending: open() answers with the lowest number that is free, which is this one.
        if (::fcntl(descriptor, F_GETFD) == -1) ::open("/dev/null", O_RDWR);
    }
    ::signal(SIGPIPE, SIG_IGN);
}

}  // namespace cinder
