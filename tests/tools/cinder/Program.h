#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace cinder::test {

/// The program `cinder` in a process of its own, its output kept.
class Program {
public:
    struct Outcome {
        int status = 0;  // 128 + signal if one ended it
        std::string out;
        std::string err;
    };

    /// Starts it. `prepare` runs in the new process before the program does.
    explicit Program(
        const std::vector<std::string>& arguments, const std::function<void()>& prepare = [] {});
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    void send(int signal) const;
    bool hasEnded();
    Outcome wait();

    static Outcome run(
        const std::vector<std::string>& arguments, const std::function<void()>& prepare = [] {}) {
        return Program(arguments, prepare).wait();
    }

private:
    pid_t process = -1;
    int waitStatus = 0;
    bool ended = false;
    int outFile = -1;
    int errFile = -1;
};

}  // namespace cinder::test
