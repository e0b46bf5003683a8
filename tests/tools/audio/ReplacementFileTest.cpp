#include "cinder/audio/ReplacementFile.h"

#include "cinder/audio/AudioFileWriter.h"

#include "support/Rng.h"
#include "tools/audio/AudioFixtures.h"

#include <doctest/doctest.h>
#include <sys/stat.h>

namespace cinder::test {

namespace {

using Names = std::vector<std::string>;

const std::string oldContent = "what was there before";

}  // namespace

TEST_CASE("ReplacementFile: links are followed, also where they point to nothing yet") {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "inner");
    std::filesystem::create_symlink("inner/later.wav", folder / "relative.wav");
    std::filesystem::create_symlink(folder / "relative.wav", folder / "absolute.wav");
    for (const std::string content : {"first", "again"}) {
        ReplacementFile file(folder / "absolute.wav");
        file.write(content.data(), 5);
        CHECK(std::filesystem::exists(folder / "inner/later.wav") == (content == "again"));
        file.commit();
        CHECK(std::filesystem::is_symlink(folder / "absolute.wav"));
        CHECK(bytesOf(folder / "inner/later.wav") == content);
    }
    std::filesystem::create_symlink("circle.wav", folder / "circle.wav");
    CHECK(isOneLine(errorOf([&] { ReplacementFile file(folder / "circle.wav"); })));
}

TEST_CASE("ReplacementFile: permissions are those of the file replaced, or of any new file") {
    const TemporaryFolder folder;
    // As long as a name can be; that of the unfinished file must fit, too.
    const auto target = folder / (std::string(251, 'x') + ".wav");
    const mode_t before = ::umask(027);
    for (const mode_t mode : {0640, 0600, 0664, 0755}) {
        if (mode != 0640) REQUIRE(::chmod(target.c_str(), mode) == 0);  // the first is new
        ReplacementFile(target).commit();
        struct stat status {};
        REQUIRE(::stat(target.c_str(), &status) == 0);
        CHECK((status.st_mode & 07777) == mode);
    }
    ::umask(before);
}

TEST_CASE("AudioFileWriter: a full disk at any byte is one clear line, and the old file stays") {
    const TemporaryFolder folder;
    Rng rng = Rng::fromEnvironment();
    const Audio audio = {rng.noise(30000, 0.9f), rng.noise(30000, 0.9f)};
    for (const std::string name : {"out.wav", "out.aiff", "out.flac", "out.ogg"}) {
        const auto target = folder / name;
        writeFile(target, audio, 48000);
        const auto whole = static_cast<int>(bytesOf(target).size());
        putBytes(target, oldContent);
        for (const int limit : {0, 10, 100, rng.integer(101, whole - 2), whole - 1}) {
            INFO(name << ", limit " << limit << " of " << whole << ", seed " << rng.seed());
            const std::string error = errorOf([&] {
                const FileSizeLimit full(static_cast<rlim_t>(limit));
                writeFile(target, audio, 48000);
            });
            CHECK(isOneLine(error));
            CHECK(error.find("File too large") != std::string::npos);
            CHECK(bytesOf(target) == oldContent);
        }
        CHECK(folder.names() == Names{name});
        std::filesystem::remove(target);
    }
}

TEST_CASE("AudioFileWriter: what a format can't hold is named before anything is written") {
    const TemporaryFolder folder;
    const struct {
        const char* name;
        int rate;
        std::int64_t frames;
    } cases[] = {{"fast.flac", 2000000, 1}, {"long.aiff", 48000, 48000LL * 36000}};
    for (const auto& c : cases) {
        INFO(c.name);
        CHECK(isOneLine(
            errorOf([&] { AudioFileWriter writer(folder / c.name, 2, c.rate, c.frames); })));
    }
    CHECK(folder.names().empty());
}

}  // namespace cinder::test
