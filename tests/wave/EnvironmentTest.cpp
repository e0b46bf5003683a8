#include "wave/Environment.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "core/NotifyEvent.h"
#include "support/Rng.h"
#include "wave/Cycle.h"

namespace cinder::wave {
namespace {

using test::runCycle;

/// A sink that notes its visits in a common log, and may do something while it is visited.
struct LoggingSink final : Producer {
    LoggingSink(Environment* environment, char name, std::string* log)
        : Producer(environment, true), name(name), log(log) {
        makeResettable();
    }
    void reset() noexcept override { ++resets; }
    void render(BasicBlock<float>*, int, unsigned flags) noexcept override {
        const test::RealtimePause notes;
        *log += name;
        *log += std::to_string(flags);
        if (whenVisited) whenVisited();
    }
    char name;
    std::string* log;
    std::function<void()> whenVisited;
    int resets = 0;
};

/// The order of sinks, told the slow way: one list for each kind of priority.
struct SinkOrder {
    void add(char name, unsigned priority) {
        std::string& list = lists[std::min(priority, 2u)];
        list.insert(priority < 2 ? list.begin() : list.end(), name);
    }
    void remove(char name) {
        for (std::string& list : lists)
            std::erase(list, name);
    }
    std::string visits() const {
        std::string log;
        for (int kind = 0; kind < 3; ++kind)
            for (char name : lists[kind])
                log += name +
                       std::to_string(kind == 0 ? Environment::writeVisit : Environment::sinkVisit);
        return log;
    }
    std::string lists[3];
};

TEST_CASE("Environment: sinks run by priority, whatever was added, moved, switched or deleted") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    for (int round = 0; round < 50; ++round) {
        Environment environment;
        SinkOrder order;
        std::string log, done;
        std::vector<std::unique_ptr<LoggingSink>> sinks;
        std::vector<unsigned> priorities(8, 99);  // 99: no sink yet
        for (char name = 'a'; name <= 'h'; ++name)
            sinks.push_back(std::make_unique<LoggingSink>(&environment, name, &log));
        for (int step = 0; step < 60; ++step) {
            const int i = rng.integer(0, 7);
            const char name = static_cast<char>('a' + i);
            LoggingSink* const sink = sinks[i].get();
            const auto operation = rng.integer(0, 20);
            if (!sink) continue;
            done += name;
            done += std::to_string(operation) + " ";
            const bool wasActive = sink->isActive(), becomesSink = operation < 8;
            if (becomesSink) priorities[i] = static_cast<unsigned>(rng.integer(0, 4));
            if (operation == 20) {
                sinks[i].reset();
            } else {
                const test::RealtimeGuard guard;
                if (becomesSink)
                    sink->setRenderPriority(priorities[i]);
                else
                    sink->setActive(operation >= 14);
            }
            const bool isRun = sinks[i] && sinks[i]->isActive() && priorities[i] != 99;
            if (becomesSink || !isRun) order.remove(name);
            if (isRun && (becomesSink || !wasActive)) order.add(name, priorities[i]);
            log.clear();
            runCycle(environment, 1);
            INFO("done: " << done);
            REQUIRE(log == order.visits());
            // Whoever has gone has left this list, too: a sanitizer watches.
            environment.reset(Environment::ResetMode::All);
        }
        if (round % 2 == 0) environment.beginShutdown();
    }
}

TEST_CASE("Environment: a sink that was pulled is not run again, unless it has priority 0") {
    Environment environment;
    test::ClockSource first(&environment), second(&environment);
    first.setRenderPriority(0);
    second.setRenderPriority(1);
    runCycle(environment, 5, {&first, &second});
    runCycle(environment, 7);
    runCycle(environment, 100, {}, Environment::skipCycle);
    using Visits = std::vector<test::ClockSource::Visit>;
    CHECK(first.visits == Visits{{5, 0}, {5, 2}, {7, 2}});
    CHECK(second.visits == Visits{{5, 0}, {7, 1}});
    CHECK(environment.getPosition() == 112);
}

TEST_CASE(
    "Environment: sinks that switch others on and off are no reason to miss one or run it twice") {
    test::Rng rng = test::Rng::fromEnvironment();
    for (int round = 0; round < 2000; ++round) {
        INFO("round " << round << ", seed " << rng.seed());
        Environment environment;
        std::string log;
        std::vector<std::unique_ptr<LoggingSink>> sinks;
        for (char name = 'a'; name <= 'f'; ++name) {
            sinks.push_back(std::make_unique<LoggingSink>(&environment, name, &log));
            sinks.back()->setRenderPriority(static_cast<unsigned>(rng.integer(0, 2)));
            if (rng.integer(0, 3) == 0) sinks.back()->setActive(false);
        }
        std::string active;
        for (const auto& sink : sinks)
            if (sink->isActive()) active += sink->name;
        std::string mustRun = active, mayRun = active;
        for (const auto& sink : sinks)
            sink->whenVisited = [&, from = sink.get()] {
                for (int k = rng.integer(0, 3); k > 0; --k) {
                    const auto other = static_cast<std::size_t>(rng.integer(0, 8));
                    LoggingSink& to = other < sinks.size() ? *sinks[other] : *from;
                    const bool on = rng.integer(0, 1) == 1;
                    to.setActive(on);
                    const bool waits = log.find(to.name) == std::string::npos;
                    const test::RealtimePause notes;
                    if (!on && waits) std::erase(mustRun, to.name);
                    if (on) mayRun += to.name;
                }
            };
        runCycle(environment, 1);
        INFO("active before " << active << ", run " << log);
        for (const auto& sink : sinks) {
            const auto runs = std::count(log.begin(), log.end(), sink->name);
            CHECK(runs <= 1);
            if (mustRun.find(sink->name) != std::string::npos) CHECK(runs == 1);
            if (mayRun.find(sink->name) == std::string::npos) CHECK(runs == 0);
        }
    }
}

TEST_CASE("Environment: each reset mode marks and clears what it says") {
    using Mode = Environment::ResetMode;
    for (Mode mode : {Mode::ActiveOnly, Mode::All, Mode::MarkOnly}) {
        INFO("mode " << static_cast<int>(mode));
        Environment environment;
        test::ClockSource active(&environment), inactive(&environment);
        inactive.setActive(false);
        runCycle(environment, 100);
        environment.reset(mode);
        CHECK(environment.getResetPosition() == 100);
        CHECK(environment.getHardResetPosition() == (mode == Mode::MarkOnly ? 0 : 100));
        CHECK(active.resets == (mode == Mode::MarkOnly ? 0 : 1));
        CHECK(inactive.resets == (mode == Mode::All ? 1 : 0));
    }
}

TEST_CASE("Environment: a rate that really changes clears everything, then tells") {
    struct Listener {
        void heard(NotifyEvent::Argument argument) {
            ++calls;
            CHECK(argument == environment);
            CHECK(source->resets == calls);
        }
        Environment* environment;
        test::ClockSource* source;
        int calls = 0;
    };
    constexpr float infinity = std::numeric_limits<float>::infinity();
    Environment environment;
    test::ClockSource source(&environment);
    source.setActive(false);
    Listener listener{&environment, &source};
    environment.sampleRateChanged.setMainHandler(
        NotifyEvent::makeHandler(&listener, &Listener::heard));
    for (float rate : {44100.0f, 0.0f, -48000.0f, infinity, std::nanf(""), 48000.0f, 48000.0f})
        environment.setSampleRate(rate);
    CHECK(listener.calls == 1);
    CHECK(environment.getSampleRate() == 48000.0f);
}

}  // namespace
}  // namespace cinder::wave
