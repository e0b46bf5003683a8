#include "support/Rng.h"
#include "tools/audio/AudioFixtures.h"
#include "tools/cinder/Program.h"

#include <doctest/doctest.h>
#include <fcntl.h>
#include <linux/capability.h>
#include <signal.h>
#include <sndfile.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace cinder::test {

namespace {

using Names = std::vector<std::string>;

const std::string oldContent = "what was there before";

/// An audio file with any number of channels and frames.
void putSound(const std::filesystem::path& path, int numChannels, int numFrames) {
    SF_INFO info{};
    info.channels = numChannels;
    info.samplerate = 48000;
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* const sound = sf_open(path.c_str(), SFM_WRITE, &info);
    REQUIRE(sound);
    const std::vector<float> samples(static_cast<std::size_t>(numChannels * numFrames), 0.5f);
    CHECK(sf_writef_float(sound, samples.data(), numFrames) == numFrames);
    sf_close(sound);
}

/// In a new process: root's right to write anywhere is gone, also for the program that it becomes.
void dropPrivileges() {
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0);
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH, 0, 0, 0);
}

void limitFileSize() {
    const rlimit limit{100'000, 100'000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

void checkOneLine(const Program::Outcome& outcome) {
    CHECK(outcome.out.empty());
    CHECK(outcome.err.rfind("cinder: ", 0) == 0);
    REQUIRE(!outcome.err.empty());
    CHECK(outcome.err.find('\n') == outcome.err.size() - 1);
}

/// More silence than anyone waits for, in a file that takes no room.
void putEndlessSilence(const std::filesystem::path& path) {
    putSound(path, 1, 1000);
    constexpr std::uint32_t dataBytes = 2'000'000'000;
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    const std::string bytes = bytesOf(path);
    const auto data = bytes.find("data");
    REQUIRE(data != std::string::npos);
    file.seekp(static_cast<std::streamoff>(data + 4));
    file.write(reinterpret_cast<const char*>(&dataBytes), 4);
    const auto total = static_cast<std::uint32_t>(data + 8 + dataBytes);
    const std::uint32_t riffBytes = total - 8;
    file.seekp(4);
    file.write(reinterpret_cast<const char*>(&riffBytes), 4);
    file.close();
    REQUIRE(::truncate(path.c_str(), total) == 0);
}

/// The unfinished output, once some of it has been written.
bool hasBegun(const TemporaryFolder& folder) {
    for (const std::string& name : folder.names())
        if (name.ends_with(".part")) {
            std::error_code gone;
            const auto size = std::filesystem::file_size(folder / name, gone);
            if (!gone && size > 20'000) return true;
        }
    return false;
}

}  // namespace

TEST_CASE("render: a wrong command is one clear line and status 2") {
    const TemporaryFolder folder;
    const std::string in = (folder / "in.wav").string();
    const std::string out = (folder / "out.wav").string();
    putSound(in, 2, 1000);
    struct Case {
        Names arguments;
        const char* says;
    };
    const Case cases[] = {
        {{}, "--help"},
        {{"rendr", in, out}, "rendr"},
        {{"render"}, "IN"},
        {{"render", in}, "OUT"},
        {{"render", in, out, "more"}, "more"},
        {{"render", in, out, "--bloc", "3"}, "--bloc"},
        {{"render", in, out, "--block"}, "--block"},
        {{"render", in, out, "--block", "0"}, "from 1 to 65536, not '0'"},
        {{"render", in, out, "--block", "-5"}, "from 1 to 65536, not '-5'"},
        {{"render", in, out, "--block=65537"}, "not '65537'"},
        {{"render", in, out, "--block", "99999999999999999999"}, "from 1 to 65536"},
        {{"render", in, out, "--block", "512x"}, "not '512x'"},
        {{"render", in, out, "--block", ""}, "from 1 to 65536"},
        {{"render", in, out, "--rate", "7999"}, "from 8000 to 384000, not '7999'"},
        {{"render", in, out, "--rate", "384001"}, "from 8000 to 384000"},
        {{"render", in, out, "--rate", "44.1e3"}, "from 8000 to 384000"},
        {{"render", in, out, "--rate", ""}, "from 8000 to 384000"},
        {{"render", in, out, "--set", "Drive"}, "NAME=VALUE"},
        {{"render", in, out, "--set", ""}, "NAME=VALUE"},
        {{"render", in, out, "--set", "=12"}, "NAME=VALUE"},
        {{"render", in, out, "--set", "Dive=12"}, "Drive, Curve, Oversampling, Level, Bypass"},
        {{"render", in, out, "--set", "Drive="}, "0 to 48 dB"},
        {{"render", in, out, "--set", "Drive=48.01"}, "0 to 48 dB"},
        {{"render", in, out, "--set", "Drive=-1"}, "0 to 48 dB"},
        {{"render", in, out, "--set", "Drive=nan"}, "0 to 48 dB"},
        {{"render", in, out, "--set", "Drive=1e999"}, "0 to 48 dB"},
        {{"render", in, out, "--set", "Drive=12=13"}, "0 to 48 dB"},
        {{"render", in, out, "--set", "Oversampling=3"}, "1, 2, 4, 8"},
        {{"render", in, out, "--set", "Bypass=yes"}, "0, 1"},
        {{"render", in, out, "--set", "Curve=folk"}, "soft fold"},
    };
    for (const Case& c : cases) {
        std::string shown;
        for (const std::string& argument : c.arguments)
            shown += argument + ' ';
        const Program::Outcome outcome = Program::run(c.arguments);
        INFO(shown << "-> " << outcome.err);
        CHECK(outcome.status == 2);
        checkOneLine(outcome);
        CHECK(outcome.err.find(c.says) != std::string::npos);
    }
    CHECK(folder.names() == Names{"in.wav"});
}

TEST_CASE("render: what cannot be read or written is one clear line, and what was there stays") {
    const TemporaryFolder folder;
    Rng rng = Rng::fromEnvironment();
    writeFile(folder / "in.wav", {rng.noise(100'000)}, 48000);
    putSound(folder / "nine.wav", 9, 1000);
    putSound(folder / "none.wav", 1, 0);
    putBytes(folder / "text.wav", "This is no audio.");
    putBytes(folder / "empty.wav", "");
    putBytes(folder / "old.wav", oldContent);
    std::filesystem::create_directory(folder / "closed");
    REQUIRE(::chmod((folder / "closed").c_str(), 0555) == 0);
    struct Case {
        std::string in;
        std::string out;
        const char* says;
        void (*prepare)() = [] {};
    };
    const Case cases[] = {
        {"missing.wav", "old.wav", "No such file"},
        {"text.wav", "old.wav", "not audio"},
        {"empty.wav", "old.wav", "empty"},
        {"nine.wav", "old.wav", "9 channels"},
        {"none.wav", "old.wav", "0 frames"},
        {"closed", "old.wav", "folder"},
        {"in.wav", "missing/out.wav", "No such file"},
        {"in.wav", "out.mp3", ".wav, .aiff"},
        {"in.wav", "closed", "ending"},
        {"in.wav", "closed/out.wav", "Permission denied", dropPrivileges},
        {"in.wav", "old.wav", "File too large", limitFileSize},
        {"in.wav", "closed.flac", "File too large", limitFileSize},
    };
    const Names before = folder.names();
    for (const Case& c : cases) {
        const Program::Outcome outcome = Program::run(
            {"render", (folder / c.in).string(), (folder / c.out).string()}, c.prepare);
        INFO(c.in << " to " << c.out << " -> " << outcome.err);
        CHECK(outcome.status == 1);
        checkOneLine(outcome);
        CHECK(outcome.err.find(c.says) != std::string::npos);
        CHECK(folder.names() == before);
        CHECK(bytesOf(folder / "old.wav") == oldContent);
    }
}

TEST_CASE("render: broken off in the middle, it leaves the old file and nothing else") {
    const TemporaryFolder folder;
    putEndlessSilence(folder / "in.wav");
    putBytes(folder / "out.wav", oldContent);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        Program program({"render", (folder / "in.wav").string(), (folder / "out.wav").string()});
        while (!hasBegun(folder) && !program.hasEnded())
            ::usleep(1000);
        program.send(signal);
        const Program::Outcome outcome = program.wait();
        INFO("signal " << signal << ": " << outcome.err);
        CHECK(outcome.status == 128 + signal);
        checkOneLine(outcome);
        CHECK(bytesOf(folder / "out.wav") == oldContent);
        CHECK(folder.names() == Names{"in.wav", "out.wav"});
    }
}

TEST_CASE("render: standard streams that are closed or full do no harm") {
    const TemporaryFolder folder;
    putSound(folder / "in.wav", 2, 20'000);
    const Names arguments = {"render", (folder / "in.wav").string(), (folder / "out.wav").string()};
    REQUIRE(Program::run(arguments).status == 0);
    const std::string whole = bytesOf(folder / "out.wav");
    void (*const preparations[])() = {
        [] { ::close(STDOUT_FILENO); },
        [] {
            for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
                ::close(stream);
        },
        [] { ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO); },
        [] {
            int ends[2];
            if (::pipe(ends) == 0) ::dup2(ends[1], STDOUT_FILENO);
            ::close(ends[0]);
            ::close(ends[1]);
        },
    };
    for (const auto prepare : preparations) {
        std::filesystem::remove(folder / "out.wav");
        CHECK(Program::run(arguments, prepare).status == 0);
        CHECK(bytesOf(folder / "out.wav") == whole);
        CHECK(folder.names() == Names{"in.wav", "out.wav"});
    }
}

TEST_CASE("cinder: help and version come on standard output") {
    const Program::Outcome version = Program::run({"--version"});
    CHECK(version.status == 0);
    CHECK(version.out == "cinder " CINDER_VERSION "\n");
    for (const Names& arguments : {Names{"--help"}, Names{"render", "--help"}}) {
        const Program::Outcome help = Program::run(arguments);
        CHECK(help.status == 0);
        CHECK(help.err.empty());
        CHECK(help.out.find("cinder render drums.wav out.wav") != std::string::npos);
    }
}

}  // namespace cinder::test
