#include "cinder/audio/ProgressBar.h"

#include "cinder/audio/FileDescriptor.h"

#include <doctest/doctest.h>
#include <fcntl.h>
#include <pty.h>
#include <stdlib.h>

#include <string>

namespace cinder::test {

namespace {

/// A terminal of its own, and what was printed on it.
class Terminal {
public:
    Terminal() {
        const winsize size{24, 60, 0, 0};
        int mainEnd = -1, programEnd = -1;
        REQUIRE(::openpty(&mainEnd, &programEnd, nullptr, nullptr, &size) == 0);
        outside = FileDescriptor(mainEnd);
        inside = FileDescriptor(programEnd);
        ::fcntl(mainEnd, F_SETFL, O_NONBLOCK);
        ::setenv("TERM", "xterm", 1);
    }

    int descriptor() const { return inside.get(); }

    std::string printed() {
        char buffer[4096];
        std::string text;
        for (ssize_t got = 0; (got = ::read(outside.get(), buffer, sizeof buffer)) > 0;)
            text.append(buffer, static_cast<size_t>(got));
        return text;
    }

private:
    FileDescriptor outside, inside;
};

}  // namespace

TEST_CASE("ProgressBar: short work shows nothing, long work a line that goes away") {
    Terminal terminal;
    double now = 10.0;
    {
        ProgressBar bar("rendering", 1000, terminal.descriptor(), [&] { return now; });
        now = 10.4;
        bar.update(100);
        CHECK(terminal.printed().empty());
        now = 12.0;
        bar.update(500);
        const std::string half = terminal.printed();
        INFO(half);
        CHECK(half.find("rendering") != std::string::npos);
        CHECK(half.find("50 %, 2 s left") != std::string::npos);
        CHECK(half.size() < 60 + 5);  // one line of the terminal and the codes around it
        now = 12.01;
        bar.update(510);
        CHECK(terminal.printed().empty());  // not at every block
        now = 15.0;
        bar.update(2000);
        CHECK(terminal.printed().find("100 %") != std::string::npos);
    }
    CHECK(terminal.printed() == "\r\x1b[K");
}

TEST_CASE("ProgressBar: a pipe and a terminal that can't erase stay clean") {
    double now = 0.0;
    int ends[2];
    REQUIRE(::pipe2(ends, O_NONBLOCK) == 0);
    const FileDescriptor readEnd(ends[0]), writeEnd(ends[1]);
    Terminal terminal;
    ::setenv("TERM", "dumb", 1);
    for (const int descriptor : {writeEnd.get(), terminal.descriptor()}) {
        ProgressBar bar("rendering", 1000, descriptor, [&] { return now += 1.0; });
        bar.update(500);
    }
    char byte = 0;
    CHECK(::read(readEnd.get(), &byte, 1) < 0);
    CHECK(terminal.printed().empty());
}

}  // namespace cinder::test
