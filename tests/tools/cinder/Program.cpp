#include "tools/cinder/Program.h"

#include <doctest/doctest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "support/TemporaryFolder.h"

namespace cinder::test {

namespace {

std::string contentOf(int file) {
    std::string content;
    char piece[4096];
    ssize_t got = 0;
    while ((got = ::pread(file, piece, sizeof piece, static_cast<off_t>(content.size()))) > 0)
        content.append(piece, static_cast<std::size_t>(got));
    return content;
}

[[noreturn]] void becomeProgram(const std::vector<std::string>& arguments, int outFile, int errFile,
                                const std::filesystem::path& home,
                                const std::function<void()>& prepare) {
    std::vector<char*> argv{const_cast<char*>("cinder")};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    // A suite that runs in the background of a script has inherited an ignored SIGINT.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        ::signal(signal, SIG_DFL);
    ::dup2(outFile, STDOUT_FILENO);
    ::dup2(errFile, STDERR_FILENO);
    // No test reads or writes the folders of whoever runs it.
    ::setenv("HOME", home.c_str(), 1);
    for (const char* const name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CONFIG_DIRS"})
        ::unsetenv(name);
    prepare();
    ::execv(CINDER_PROGRAM, argv.data());
    ::_exit(127);
}

}  // namespace

Program::Program(const std::vector<std::string>& arguments, const std::function<void()>& prepare)
    : outFile(::memfd_create("out", MFD_CLOEXEC)), errFile(::memfd_create("err", MFD_CLOEXEC)) {
    REQUIRE(outFile >= 0);
    REQUIRE(errFile >= 0);
    static const TemporaryFolder home;
    process = ::fork();
    REQUIRE(process >= 0);
    if (process == 0) becomeProgram(arguments, outFile, errFile, home.path, prepare);
}

Program::~Program() {
    if (!ended) {
        ::kill(process, SIGKILL);
        wait();
    }
    ::close(outFile);
    ::close(errFile);
}

void Program::send(int signal) const {
    REQUIRE(::kill(process, signal) == 0);
}

bool Program::hasEnded() {
    if (!ended) ended = ::waitpid(process, &waitStatus, WNOHANG) == process;
    return ended;
}

Program::Outcome Program::wait() {
    while (!ended) {
        const pid_t answer = ::waitpid(process, &waitStatus, 0);
        ended = answer == process || (answer < 0 && errno != EINTR);
    }
    const int status = WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : 128 + WTERMSIG(waitStatus);
    return {status, contentOf(outFile), contentOf(errFile)};
}

}  // namespace cinder::test
