#include "cinder/audio/SoundFile.h"
#include "support/Rng.h"
#include "tools/audio/AudioFixtures.h"
#include "tools/cinder/Program.h"

#include <doctest/doctest.h>
#include <fcntl.h>
#include <linux/capability.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>

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
    const SoundFile sound(sf_open(path.c_str(), SFM_WRITE, &info));
    REQUIRE(sound);
    const std::vector<float> samples(static_cast<std::size_t>(numChannels * numFrames), 0.5f);
    CHECK(sf_writef_float(sound.get(), samples.data(), numFrames) == numFrames);
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

void checkRefusal(const Program::Outcome& outcome, int status, const std::string& says) {
    INFO(outcome.err);
    CHECK(outcome.status == status);
    CHECK(outcome.out.empty());
    CHECK(outcome.err.rfind("cinder: ", 0) == 0);
    CHECK(outcome.err.find(says) != std::string::npos);
    REQUIRE(!outcome.err.empty());
    CHECK(outcome.err.find('\n') == outcome.err.size() - 1);
}

/// More silence than anyone waits for, in a file that takes no room.
void putEndlessSilence(const std::filesystem::path& path) {
    putSound(path, 1, 1000);
    std::string bytes = bytesOf(path);
    const auto data = bytes.find("data");
    REQUIRE(data != std::string::npos);
    const auto total = static_cast<std::uint32_t>(data + 8 + 2'000'000'000);
    const std::uint32_t sizes[] = {total - 8, 2'000'000'000};
    std::memcpy(bytes.data() + 4, &sizes[0], 4);
    std::memcpy(bytes.data() + data + 4, &sizes[1], 4);
    putBytes(path, bytes);
    REQUIRE(::truncate(path.c_str(), total) == 0);
}

/// The unfinished output, once some of it has been written.
bool hasBegun(const TemporaryFolder& folder) {
    const Names names = folder.names();
    return std::ranges::any_of(names, [&](const std::string& name) {
        std::error_code gone;
        const auto size = std::filesystem::file_size(folder / name, gone);
        return name.ends_with(".part") && !gone && size > 20'000;
    });
}

}  // namespace

TEST_CASE("render: a wrong command is one clear line and status 2") {
    const TemporaryFolder folder;
    const std::string in = (folder / "in.wav").string();
    const std::string out = (folder / "out.wav").string();
    putSound(in, 2, 1000);
    std::vector<std::pair<Names, std::string>> cases = {
        {{}, "--help"},
        {{"rendr", in, out}, "rendr"},
        {{"render"}, "IN"},
        {{"render", in}, "OUT"},
        {{"render", in, out, "more"}, "more"},
        {{"render", in, out, "--bloc", "3"}, "--bloc"},
        {{"render", in, out, "--block"}, "--block"},
    };
    const struct {
        const char* option;
        Names values;
        const char* says;
    } wrongValues[] = {
        {"--block", {"0", "-5", "65537", "99999999999999999999", "512x", ""}, "from 1 to 65536"},
        {"--rate", {"7999", "384001", "44.1e3", ""}, "from 8000 to 384000"},
        {"--set", {"Drive", "", "=12", " = 1"}, "NAME=VALUE"},
        {"--set", {"Drive=12"}, "did you mean Band 1 Drive"},
        {"--set", {"899=1", "-1=1", "Miks=3"}, "there is no parameter"},
        {"--set", {"Mix=", "Mix=nan", "Mix=loud", "Mix=3 Hz"}, "is no value of Mix"},
        {"--set", {"Band 1 Style=warm tub"}, "is no value of Band 1 Style"},
        {"--tempo", {"0", "1000", "nan", "fast"}, "from 1 to 999"},
        {"--tail", {"-1", "3601", "1s", ""}, "from 0 to 3600"},
    };
    for (const auto& [option, values, says] : wrongValues)
        for (const std::string& value : values)
            cases.push_back({{"render", in, out, option, value}, says});
    for (const auto& [arguments, says] : cases) {
        INFO("last argument " << (arguments.empty() ? "none" : arguments.back()));
        checkRefusal(Program::run(arguments), 2, says);
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
    putBytes(folder / "protected.wav", oldContent);
    REQUIRE(::chmod((folder / "protected.wav").c_str(), 0444) == 0);
    std::filesystem::create_directory(folder / "folder.wav");
    std::filesystem::create_directory(folder / "closed");
    REQUIRE(::chmod((folder / "closed").c_str(), 0555) == 0);
    REQUIRE(::mkfifo((folder / "pipe.wav").c_str(), 0600) == 0);
    const struct {
        std::string in, out;
        const char* says;
        void (*prepare)() = [] {};
    } cases[] = {
        {"missing.wav", "old.wav", "No such file"},
        {"text.wav/x.wav", "old.wav", "Not a directory"},
        {"text.wav", "old.wav", "is not audio"},
        {"empty.wav", "old.wav", "is empty"},
        {"nine.wav", "old.wav", "has 9 channels; 1 or 2 are supported"},
        {"none.wav", "old.wav", "0 frames"},
        {"closed", "old.wav", "is a folder"},
        {"pipe.wav", "old.wav", "is a pipe or device"},
        {"line\nbreak.wav", "old.wav", "line?break.wav"},
        {"in.wav", "missing/out.wav", "No such file"},
        {"in.wav", "text.wav/out.wav", "Not a directory"},
        {"in.wav", "folder.wav", "is a folder"},
        {"in.wav", "pipe.wav", "is a pipe or device"},
        {"in.wav", std::string(300, 'x') + ".wav", "File name too long"},
        {"in.wav", "out.mp3", ".wav, .aiff, .aif, .flac, .ogg, .oga"},
        {"in.wav", ".wav", ".wav, .aiff, .aif, .flac, .ogg, .oga"},
        {"in.wav", "closed", "ending"},
        {"in.wav", "closed/out.wav", "Permission denied", dropPrivileges},
        {"in.wav", "protected.wav", "Permission denied", dropPrivileges},
        {"in.wav", "old.wav", "File too large", limitFileSize},
        {"in.wav", "closed.flac", "File too large", limitFileSize},
    };
    const Names before = folder.names();
    for (const auto& c : cases) {
        INFO(c.in << " to " << c.out);
        const Names command = {"render", (folder / c.in).string(), (folder / c.out).string()};
        checkRefusal(Program::run(command, c.prepare), 1, c.says);
        CHECK(folder.names() == before);
        CHECK(bytesOf(folder / "old.wav") == oldContent);
        CHECK(bytesOf(folder / "protected.wav") == oldContent);
    }
}

TEST_CASE("render: what is wrong with a file of settings is told by its line") {
    const TemporaryFolder folder;
    putSound(folder / "in.wav", 2, 1000);
    const std::string header("MThd\0\0\0\6\0\1\0\1\0\x60MTrk\0\0\0\x08", 22);
    const struct {
        const char* option;
        std::string content;
        const char* says;
    } cases[] = {
        {"--params", "Mix=50%\n\nMix\n", "line 3: a parameter is set by NAME=VALUE"},
        {"--params", "# Mix=1\nMiks=50%", "line 2: there is no parameter \"Miks\""},
        {"--params", "Mix=50%\r\nMix=loud\r\n", "line 2: \"loud\" is no value of Mix"},
        {"--automation", "s,p,v\n0,Mix\n", "line 2: there are 2 cells and not three"},
        {"--automation", "0,Mix,1,2\n", "line 1: there are 4 cells"},
        {"--automation", "0,Miks,1\n", "line 1: there is no parameter"},
        {"--automation", "0s,Mix,1\n", "line 1: \"0s\" is no time in seconds"},
        {"--automation", "s,p,v\ns,p,v\n", "line 2: \"s\" is no time in seconds"},
        {"--automation", "-0.1,Mix,1\n", "is no time in seconds"},
        {"--automation", "0,\"Mix,1\n", "line 1: a quote is not closed"},
        {"--automation", "0,\"Mix\" x,1\n", "line 1: a comma is missing"},
        {"--automation", "0,Mix,loud\n", "line 1: \"loud\" is no value of Mix"},
        {"--midi", "no MIDI at all", "cannot read"},
        {"--midi", header + std::string("\0\x90\x3c", 3), "cannot read"},
        {"--midi", header + std::string("\0\x90\xbc\x64\0\xff\x2f\0", 8), "it is damaged"},
        {"--sidechain", "no audio", "is not audio"},
    };
    for (const auto& [option, content, says] : cases) {
        INFO(option << ' ' << content);
        putBytes(folder / "what", content);
        checkRefusal(
            Program::run({"render", (folder / "in.wav").string(), (folder / "out.wav").string(),
                          option, (folder / "what").string()}),
            1, says);
    }
    for (const char* option : {"--params", "--automation", "--midi", "--sidechain"})
        checkRefusal(
            Program::run({"render", (folder / "in.wav").string(), (folder / "out.wav").string(),
                          option, (folder / "missing").string()}),
            1, "No such file");
    CHECK(folder.names() == Names{"in.wav", "what"});
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
        INFO("signal " << signal);
        checkRefusal(program.wait(), 128 + signal, "");
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
