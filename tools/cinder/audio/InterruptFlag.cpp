#include "cinder/audio/InterruptFlag.h"

#include <atomic>

namespace cinder {

namespace {

std::atomic<int> caughtSignal = 0;
static_assert(std::atomic<int>::is_always_lock_free);  // a handler may use nothing else

extern "C" void catchSignal(int signal) {
    caughtSignal.store(signal);
}

}  // namespace

InterruptFlag::InterruptFlag() noexcept {
    caughtSignal.store(0);
    for (size_t i = 0; i < handled.size(); ++i) {
        ::sigaction(handled[i], nullptr, &previous[i]);
        if (previous[i].sa_handler == SIG_IGN) continue;
        struct sigaction action {};
        action.sa_handler = handled[i] == SIGXFSZ ? SIG_IGN : catchSignal;
        ::sigaction(handled[i], &action, nullptr);
    }
}

InterruptFlag::~InterruptFlag() {
    for (size_t i = 0; i < handled.size(); ++i)
        ::sigaction(handled[i], &previous[i], nullptr);
}

bool InterruptFlag::isSet() const noexcept {
    return caughtSignal.load() != 0;
}

void InterruptFlag::throwIfSet() const {
    if (const int signal = caughtSignal.load()) throw Interrupted(signal);
}

}  // namespace cinder
