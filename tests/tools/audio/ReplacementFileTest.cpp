#include "cinder/audio/ReplacementFile.h"

#include "cinder/audio/AudioFileReader.h"
#include "cinder/audio/AudioFileWriter.h"
#include "cinder/audio/InterruptFlag.h"

#include "support/Rng.h"
#include "tools/audio/AudioFixtures.h"

#include <doctest/doctest.h>
#include <linux/capability.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <csignal>

namespace cinder::test {

namespace {

using Names = std::vector<std::string>;

const std::string oldContent = "what was there before";

/// Root may do anything, so that no folder is closed to it: this takes that right away for a while.
class NoPrivileges {
public:
    NoPrivileges() {
        REQUIRE(::syscall(SYS_capget, &header, before) == 0);
        __user_cap_data_struct after[2] = {before[0], before[1]};
        after[0].effective &= ~((1u << CAP_DAC_OVERRIDE) | (1u << CAP_DAC_READ_SEARCH));
        REQUIRE(::syscall(SYS_capset, &header, after) == 0);
    }
    ~NoPrivileges() { CHECK(::syscall(SYS_capset, &header, before) == 0); }

private:
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct before[2]{};
};

/// Files can't grow beyond this: the nearest thing to a full disk that needs no rights to set up.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        REQUIRE(::getrlimit(RLIMIT_FSIZE, &before) == 0);
        const rlimit limit{bytes, before.rlim_max};
        REQUIRE(::setrlimit(RLIMIT_FSIZE, &limit) == 0);
    }
    ~FileSizeLimit() { CHECK(::setrlimit(RLIMIT_FSIZE, &before) == 0); }

private:
    rlimit before{};
};

mode_t modeOf(const std::filesystem::path& path) {
    struct stat status {};
    REQUIRE(::stat(path.c_str(), &status) == 0);
    return status.st_mode & 07777;
}

}  // namespace

TEST_CASE("ReplacementFile: the target is the old file or the new one, and nothing is left over") {
    const TemporaryFolder folder;
    const auto target = folder / "out.wav";
    for (const bool commits : {false, true}) {
        putBytes(target, oldContent);
        {
            ReplacementFile file(target);
            file.write("new", 3);
            CHECK(bytesOf(target) == oldContent);
            CHECK(folder.names().size() == 2);
            if (commits) file.commit();
        }
        CHECK(bytesOf(target) == (commits ? "new" : oldContent));
        CHECK(folder.names() == Names{"out.wav"});
    }
}

TEST_CASE("ReplacementFile: links are followed, also where they point to nothing yet") {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "inner");
    putBytes(folder / "inner/real.wav", oldContent);
    std::filesystem::create_symlink("inner/real.wav", folder / "relative.wav");
    std::filesystem::create_symlink(folder / "relative.wav", folder / "absolute.wav");
    std::filesystem::create_symlink("inner/later.wav", folder / "dangling.wav");
    std::filesystem::create_symlink("circle.wav", folder / "circle.wav");
    for (const char* name : {"absolute.wav", "dangling.wav"}) {
        ReplacementFile file(folder / name);
        file.write(name, 5);
        file.commit();
        CHECK(std::filesystem::is_symlink(folder / name));
    }
    CHECK(bytesOf(folder / "inner/real.wav") == "absol");
    CHECK(bytesOf(folder / "inner/later.wav") == "dangl");
    CHECK(isOneLine(errorOf([&] { ReplacementFile file(folder / "circle.wav"); })));
}

TEST_CASE("ReplacementFile: permissions are those of the file replaced, or of any new file") {
    const TemporaryFolder folder;
    const mode_t before = ::umask(027);
    for (const mode_t mode : {0600, 0644, 0664, 0755}) {
        putBytes(folder / "old.wav", oldContent);
        REQUIRE(::chmod((folder / "old.wav").c_str(), mode) == 0);
        ReplacementFile file(folder / "old.wav");
        file.commit();
        CHECK(modeOf(folder / "old.wav") == mode);
    }
    ReplacementFile(folder / "new.wav").commit();
    CHECK(modeOf(folder / "new.wav") == 0640);
    ::umask(before);
}

TEST_CASE("ReplacementFile: any name that a folder can hold can be written") {
    const TemporaryFolder folder;
    std::string accents;
    for (int i = 0; i < 125; ++i)
        accents += "é";
    for (const std::string& name : {std::string(251, 'x') + ".wav", accents + "x.wav"}) {
        ReplacementFile file(folder / name);
        file.commit();
        CHECK(std::filesystem::exists(folder / name));
    }
}

TEST_CASE("ReplacementFile: what can't be replaced is named in one line and stays") {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "folder.wav");
    std::filesystem::create_directory(folder / "closed");
    REQUIRE(::chmod((folder / "closed").c_str(), 0555) == 0);
    putBytes(folder / "protected.wav", oldContent);
    REQUIRE(::chmod((folder / "protected.wav").c_str(), 0444) == 0);
    const NoPrivileges none;
    struct Case {
        std::filesystem::path path;
        const char* says;
    };
    const Case cases[] = {
        {folder / "missing/out.wav", "No such file"},
        {folder / "protected.wav/out.wav", "Not a directory"},
        {folder / "folder.wav", "is a folder"},
        {folder / "", "is not the name of a file"},
        {folder / "closed/out.wav", "Permission denied"},
        {folder / "protected.wav", "Permission denied"},
        {folder / (std::string(300, 'x') + ".wav"), "File name too long"},
        {"/dev/null", "is a pipe or device"},
    };
    for (const Case& c : cases) {
        const std::string error = errorOf([&] { ReplacementFile file(c.path); });
        INFO(c.path << ": " << error);
        CHECK(isOneLine(error));
        CHECK(error.find(c.says) != std::string::npos);
    }
    CHECK(folder.names() == Names{"closed", "folder.wav", "protected.wav"});
    CHECK(bytesOf(folder / "protected.wav") == oldContent);
}

TEST_CASE("AudioFileWriter: a full disk at any byte is one clear line, and the old file stays") {
    const TemporaryFolder folder;
    const InterruptFlag interrupt;  // turns SIGXFSZ into an error
    Rng rng = Rng::fromEnvironment();
    const Audio audio = {rng.noise(30000, 0.9f), rng.noise(30000, 0.9f)};
    for (const std::string name : {"out.wav", "out.aiff", "out.flac", "out.ogg"}) {
        const auto target = folder / name;
        writeFile(target, audio, 48000);
        const auto whole = static_cast<int>(bytesOf(target).size());
        putBytes(target, oldContent);
        for (const int limit : {0, 10, 100, rng.integer(101, whole - 2), whole - 1}) {
            INFO(name << ", limit " << limit << " of " << whole << ", seed " << rng.seed());
            std::string error;
            {
                const FileSizeLimit full(static_cast<rlim_t>(limit));
                error = errorOf([&] { writeFile(target, audio, 48000); });
            }
            CHECK(isOneLine(error));
            CHECK(error.find("File too large") != std::string::npos);
            CHECK(bytesOf(target) == oldContent);
        }
        CHECK(folder.names() == Names{name});
        std::filesystem::remove(target);
    }
}

TEST_CASE("AudioFileWriter: an interrupted run leaves the old file whole") {
    const TemporaryFolder folder;
    const auto target = folder / "out.flac";
    putBytes(target, oldContent);
    const std::vector<float> samples = sine(440.0, 48000, 10000);
    const float* channel = samples.data();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const InterruptFlag interrupt;
        const auto run = [&] {
            AudioFileWriter writer(target, 1, 48000, 100000);
            for (int block = 0; block < 10; ++block) {
                interrupt.throwIfSet();
                writer.write({&channel, 1}, 10000);
                if (block == 5) std::raise(signal);
            }
            writer.commit();
        };
        CHECK_THROWS_AS(run(), Interrupted);
        CHECK(bytesOf(target) == oldContent);
        CHECK(folder.names() == Names{"out.flac"});
    }
}

TEST_CASE("AudioFileWriter: a file can be written over while it is read") {
    const TemporaryFolder folder;
    const auto path = folder / "same.wav";
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const Audio audio = {rng.noise(20000)};
    writeFile(path, audio, 48000);
    {
        AudioFileReader reader(path);
        AudioFileWriter writer(path, 1, 48000, reader.numFrames());
        std::vector<float> block(512);
        float* into = block.data();
        const float* from = block.data();
        while (const int got = reader.read({&into, 1}, 512)) {
            for (float& sample : block)
                sample = -sample;
            writer.write({&from, 1}, got);
        }
        writer.commit();
    }
    const Audio negated = readFile(path);
    REQUIRE(negated[0].size() == audio[0].size());
    for (size_t n = 0; n < audio[0].size(); ++n)
        REQUIRE(negated[0][n] == -audio[0][n]);
}

TEST_CASE("AudioFileWriter: what a format can't hold is named before anything is written") {
    const TemporaryFolder folder;
    for (const std::string name : {"out.mp3", "out", ".wav", "out.wav.part"}) {
        const std::string error =
            errorOf([&] { AudioFileWriter writer(folder / name, 2, 48000, 1); });
        INFO(name << ": " << error);
        CHECK(isOneLine(error));
        CHECK(error.find(".wav, .aiff, .aif, .flac, .ogg, .oga") != std::string::npos);
    }
    struct Case {
        std::string name;
        int rate;
        std::int64_t frames;
    };
    constexpr std::int64_t tenHours = 48000LL * 36000;
    for (const Case& c : {Case{"fast.flac", 2000000, 1}, Case{"long.aiff", 48000, tenHours}}) {
        const std::string error =
            errorOf([&] { AudioFileWriter writer(folder / c.name, 2, c.rate, c.frames); });
        INFO(c.name << ": " << error);
        CHECK(isOneLine(error));
    }
    CHECK(folder.names().empty());
}

}  // namespace cinder::test
