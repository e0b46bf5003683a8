#include "presets/files/Paths.h"

#include <doctest/doctest.h>
#include <stdlib.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "core/Utf8.h"
#include "presets/files/UserDirs.h"
#include "support/Rng.h"
#include "support/TemporaryFolder.h"

namespace cinder::test {
namespace {

namespace fs = std::filesystem;

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = utf8Length(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

/// A variable of the environment as it is here, and then as it was.
class Variable {
public:
    Variable(const char* name, const std::optional<std::string>& value) : name(name) {
        const char* const old = ::getenv(name);
        if (old) before = old;
        set(value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { set(before); }

private:
    void set(const std::optional<std::string>& value) const {
        value ? ::setenv(name, value->c_str(), 1) : ::unsetenv(name);
    }
    const char* name;
    std::optional<std::string> before;
};

}  // namespace

TEST_CASE("systemPath: every name that a disk can have comes back, and none is another's") {
    CHECK(systemPath("/home/anna/B\xc3\xb6se/") == "\\home\\anna\\B\xc3\xb6se\\");
    CHECK(systemPath("a\\b") ==
          "a\xef\x81\x9c"
          "b");
    CHECK(systemPath("\xe4") == "\xef\x83\xa4");
    CHECK(systemPath("\xef\x81\x9c") == "\xef\x83\xaf\xef\x82\x81\xef\x82\x9c");
    CHECK(systemPath("\xef\x80\xa0") == "\xef\x80\xa0");  // U+F020 stands for nothing

    Rng rng = Rng::fromEnvironment();
    const std::string_view pieces[] = {"/",
                                       "\\",
                                       "a",
                                       ".",
                                       "\xef",
                                       "\x81",
                                       "\x9c",
                                       "\x80",
                                       "\x83",
                                       "\xef\x81\x9c",
                                       "\xef\x83\xaf",
                                       "\xf0\x9f\x8e\xb8",
                                       "\xff"};
    std::map<std::string, std::string> ownerOf;
    INFO("seed " << rng.seed());
    for (int i = 0; i < 20000; ++i) {
        std::string native;
        for (int count = rng.integer(1, 6); count > 0; --count)
            native += pieces[rng.next() % std::size(pieces)];
        const std::string inner = systemPath(native);
        CAPTURE(inner);
        REQUIRE(isUtf8(inner));
        REQUIRE(inner.find('/') == std::string::npos);
        REQUIRE(nativePath(inner).native() == native);
        REQUIRE(ownerOf.emplace(inner, native).first->second == native);
    }
    // What a person or a host may have written, and what names no file.
    CHECK(nativePath("/home/anna\\Sounds") == "/home/anna/Sounds");
    CHECK(nativePath(std::string_view("a\0b", 3)).empty());
}

TEST_CASE("Paths: components, extensions, product names") {
    CHECK(withTrailingBackslash("") == "");
    CHECK(withTrailingBackslash("\\a") == "\\a\\");
    CHECK(withTrailingBackslash("\\a\\") == "\\a\\");
    CHECK(lastPathComponent("\\a\\b.knp") == "b.knp");
    CHECK(lastPathComponent("b") == "b");
    CHECK(lastPathComponent("\\a\\") == "");
    CHECK(removeExtension("preset.v2.knp") == "preset.v2");
    CHECK(removeExtension("none") == "none");
    CHECK(removeExtension("\\v1.2\\none") == "\\v1.2\\none");
    CHECK(versionedName("Cinder", 1) == "Cinder");
    CHECK(versionedName("Cinder", 2) == "Cinder 2");
    CHECK(registryKeyPath("Cinder", 1) == "Software\\Kestrelon\\Cinder\\1.0");
}

TEST_CASE("Paths: folders are made with all above them, and a file in the way is none") {
    const TemporaryFolder folder;
    const std::string root = withTrailingBackslash(systemPath(folder.path));
    CHECK(createFolders(root + "a\\b c\\d\\"));
    CHECK(createFolders(root + "a"));
    CHECK(fs::is_directory(folder / "a/b c/d"));
    putBytes(folder / "file", "x");
    CHECK_FALSE(createFolders(root + "file"));
    CHECK_FALSE(createFolders(root + "file\\below\\"));
    CHECK_FALSE(createFolders(""));
    CHECK(fileExists(root + "file"));
    CHECK_FALSE(folderExists(root + "file"));
    CHECK_FALSE(fileExists(root + "a"));
    CHECK_FALSE(fileExists(root + "nothing"));

    fs::create_directory_symlink("..", folder / "a/up");
    fs::create_directory_symlink(folder / "a/b c", folder / "across");
    CHECK(isCircularLink(root + "a\\up\\"));
    CHECK(isCircularLink(root + "a\\up\\a\\up"));
    CHECK_FALSE(isCircularLink(root + "across"));
    CHECK_FALSE(isCircularLink(root + "a"));
}

TEST_CASE("userDirectory: absolute or below the home folder, the last line counts") {
    struct Case {
        std::string content, folder;
    };
    const std::string documents = "XDG_DOCUMENTS_DIR=\"";
    const Case cases[] = {
        {documents + "$HOME/Dokumente\"\n", "/h/Dokumente"},
        {"# x\r\n  " + documents + "$HOME/A \\$5 \\\"B\\\"\"\r\n", "/h/A $5 \"B\""},
        {documents + "/data/D\" # mine", "/data/D"},
        {documents + "$HOME/A\"\n" + documents + "/B\"\n#" + documents + "/C\"", "/B"},
        {documents + "$HOME/\"\n", "/h/"},
        {"XDG_DOCUMENTS_DIR = \"/D\"", "/D"},
        // No folder at all.
        {documents + "relative\"", ""},
        {documents + "$HOMELAND/x\"", ""},
        {documents + "/open", ""},
        {"XDG_DOCUMENTS_DIR=/D", ""},
        {"XDG_DOCUMENTS_DIRS=\"/D\"", ""},
        {"MY_XDG_DOCUMENTS_DIR=\"/D\"", ""},
        {"", ""},
    };
    for (const Case& row : cases) {
        CAPTURE(row.content);
        CHECK(userDirectory(row.content, "XDG_DOCUMENTS_DIR", "/h") == row.folder);
    }
    CHECK(userDirectory(documents + "$HOME/D\"", "XDG_DOCUMENTS_DIR", {}).empty());
}

TEST_CASE("Paths: documents and application data lie where the user has put them") {
    const TemporaryFolder home;
    const std::string inner = systemPath(home.path);
    const Variable homeFolder("HOME", home.path.string());
    const Variable noConfig("XDG_CONFIG_HOME", std::nullopt);
    const Variable noData("XDG_DATA_HOME", "not/absolute");
    CHECK(documentsFolder() == inner + "\\Documents\\");
    CHECK(defaultPresetFolder("Cinder") == inner + "\\Documents\\Kestrelon\\Cinder\\");
    CHECK(applicationDataFolder("Cinder 2") == inner + "\\.local\\share\\Kestrelon\\Cinder 2\\");

    fs::create_directories(home / ".config");
    fs::create_directories(home / "other");
    putBytes(home / ".config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/D\\\\E\"\n");
    putBytes(home / "other/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"/docs\"\n");
    CHECK(documentsFolder() == inner +
                                   "\\D\xef\x81\x9c"
                                   "E\\");
    const Variable config("XDG_CONFIG_HOME", (home / "other").string());
    CHECK(documentsFolder() == "\\docs\\");
    const Variable data("XDG_DATA_HOME", "/data");
    CHECK(applicationDataFolder("Cinder") == "\\data\\Kestrelon\\Cinder\\");
}

}  // namespace cinder::test
