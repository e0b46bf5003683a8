#include "presets/archive/InstallArchive.h"

#include "presets/archive/ArchiveFixtures.h"
#include "presets/files/Paths.h"
#include "support/Rng.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cinder::test {

namespace {

namespace fs = std::filesystem;

const Tree wanted = {{"s/", ""}, {"s/a", "1"}, {"b", "2"}};

std::string smallArchive() {
    return archiveOf(folderEntry("f", folderEntry("s", fileEntry("a", "1")) + fileEntry("b", "2")));
}

bool install(const std::string& bytes, const fs::path& destination) {
    return installArchiveFolder(streamOf(bytes), "f",
                                withTrailingBackslash(systemPath(destination)));
}

TEST_CASE("installArchiveFolder: the tree is there whole, in a missing or an empty folder") {
    const TemporaryFolder folder;
    CHECK(install(smallArchive(), folder / "deep/er/tree"));
    CHECK(treeOf(folder / "deep/er") ==
          Tree{{"tree/", ""}, {"tree/s/", ""}, {"tree/s/a", "1"}, {"tree/b", "2"}});

    fs::create_directory(folder / "empty");
    REQUIRE(::chmod((folder / "empty").c_str(), 0700) == 0);
    fs::create_symlink("empty", folder / "link");
    CHECK(install(smallArchive(), folder / "link"));
    CHECK(treeOf(folder / "empty") == wanted);
    struct stat status {};
    REQUIRE(::stat((folder / "empty").c_str(), &status) == 0);
    CHECK((status.st_mode & 07777) == 0700);
    CHECK(folder.names() == std::vector<std::string>{"deep", "empty", "link"});
}

TEST_CASE("installArchiveFolder: a user's own files stay, and what is missing is added") {
    const TemporaryFolder folder;
    fs::create_directory(folder / "tree");
    putBytes(folder / "tree/b", "mine");
    CHECK(install(smallArchive(), folder / "tree"));
    CHECK(treeOf(folder / "tree") == Tree{{"s/", ""}, {"s/a", "1"}, {"b", "mine"}});
    CHECK(folder.names() == std::vector<std::string>{"tree"});
}

TEST_CASE("installArchiveFolder: an archive that fails or a full disk leaves nothing") {
    const TemporaryFolder folder;
    const std::string whole = smallArchive();
    CHECK_FALSE(install(whole.substr(0, whole.size() - 80), folder / "tree"));
    CHECK_FALSE(install(archiveOf(folderEntry("f", fileEntry("a/b", "1") + fileEntry("b", "2"))),
                        folder / "tree"));
    {
        const FileSizeLimit fullDisk(1000);
        CHECK_FALSE(install(archiveOf(folderEntry("f", fileEntry("a", std::string(2000, 'x')))),
                            folder / "tree"));
    }
    CHECK(folder.names().empty());
}

TEST_CASE("installArchiveFolder: starts that are killed, and several at once") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    std::string entries;
    for (int i = 0; i < 12; ++i)
        entries += folderEntry(std::to_string(i), fileEntry("a", std::string(9000, 'x')));
    const std::string bytes = archiveOf(folderEntry("f", entries));
    const TemporaryFolder folder;
    const auto start = [&] {
        const pid_t child = ::fork();
        if (child == 0) ::_exit(install(bytes, folder / "tree") ? 0 : 1);
        REQUIRE(child > 0);
        return child;
    };
    for (int run = 0; run < 20; ++run) {
        fs::remove_all(folder / "tree");
        const pid_t children[] = {start(), start()};
        ::usleep(static_cast<unsigned>(rng.integer(0, 4000)));
        ::kill(children[0], SIGKILL);
        if (run % 2 == 0) ::kill(children[1], SIGKILL);
        for (const pid_t child : children) {
            int status = 0;
            REQUIRE(::waitpid(child, &status, 0) == child);
            CHECK((WIFSIGNALED(status) || WEXITSTATUS(status) == 0));
        }
        const bool isThere = fs::exists(folder / "tree");
        CHECK((isThere || run % 2 == 0));
        if (isThere) CHECK(treeOf(folder / "tree").size() == 24);
    }
    fs::remove_all(folder / "tree");
    CHECK(install(bytes, folder / "tree"));
    CHECK(folder.names() == std::vector<std::string>{"tree"});  // the cut-off ones are removed
}

}  // namespace

}  // namespace cinder::test
