#include "presets/files/FileEnumerator.h"

#include <doctest/doctest.h>
#include <sys/stat.h>

#include <filesystem>
#include <set>
#include <string>

#include "presets/files/Paths.h"
#include "support/TemporaryFolder.h"

namespace cinder::test {
namespace {

namespace fs = std::filesystem;

std::multiset<std::string> namesOf(const std::string& pattern, bool directories) {
    std::multiset<std::string> names;
    std::string name;
    for (const auto at = FileEnumerator::create(pattern, directories); at->next();) {
        at->name(name);
        names.insert(name);
    }
    return names;
}

}  // namespace

TEST_CASE("FileEnumerator: every file once, by a name that leads back to it") {
    const TemporaryFolder folder;
    const std::string root = withTrailingBackslash(systemPath(folder.path));
    const std::string hostile[] = {"a.knp",           "A.knp", "back\\slash.knp",  "line\nend.knp",
                                   "bad\xff.KnP",     "*.knp", "\xef\x81\x9c.knp", " .knp",
                                   "b\xc3\xb6se.knp", "-.knp"};
    for (const std::string& name : hostile)
        putBytes(folder / name, name);
    putBytes(folder / "other.txt", "");
    putBytes(folder / "a.knp.part", "");
    fs::create_directory(folder / "folder.knp");
    const auto names = namesOf(root + "*.knp", false);
    CHECK(names.size() == std::size(hostile));
    std::set<std::string> contents;
    for (const std::string& name : names)
        contents.insert(bytesOf(nativePath(root + name)));
    CHECK(contents == std::set<std::string>(std::begin(hostile), std::end(hostile)));
}

TEST_CASE("FileEnumerator: folders or files, links followed, and nothing that can't be read") {
    const TemporaryFolder folder;
    // A star in the folder's own path is a star.
    fs::create_directories(folder / "s*r/inner");
    fs::create_directories(folder / "sour");
    const fs::path star = folder / "s*r";
    putBytes(star / "file", "");
    fs::create_symlink("file", star / "link");
    fs::create_symlink("nothing", star / "broken");
    fs::create_directory_symlink("inner", star / "way");
    REQUIRE(::mkfifo((star / "pipe").c_str(), 0600) == 0);
    const std::string pattern = withTrailingBackslash(systemPath(star)) + "*";
    using Names = std::multiset<std::string>;
    CHECK(namesOf(pattern, false) == Names{"file", "link"});
    CHECK(namesOf(pattern, true) == Names{"inner", "way"});
    CHECK(namesOf(systemPath(folder.path) + "\\nowhere\\*", true).empty());
    CHECK(namesOf(systemPath(star / "file") + "\\*", false).empty());
}

}  // namespace cinder::test
