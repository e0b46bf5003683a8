#include "plugin/settings/SettingsFile.h"

#include <doctest/doctest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/Rng.h"
#include "support/TemporaryFolder.h"

namespace cinder::test {
namespace {

namespace fs = std::filesystem;

const std::string productKey = R"(Software\Kestrelon\Cinder\1.0)";

/// Runs `work` in a process of its own and answers with what it answered.
template <typename Work>
pid_t inChild(Work work) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(work() ? 0 : 1);
    REQUIRE(child > 0);
    return child;
}

bool succeeded(pid_t child) {
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool putInt(const SettingsKey& key, const std::string& name, int value) {
    SettingsFileWriter writer(key);
    writer.intValue(name, value, 0);
    return writer.commit();
}

int getInt(const SettingsKey& key, const std::string& name, int fallback = -1) {
    return SettingsFileReader(key).intValue(name, 0, fallback);
}

TEST_CASE("SettingsKey: each key path has a file of its own, and none outside the root") {
    struct Row {
        const char* keyPath;
        const char* file;
    };
    const Row rows[] = {
        {R"(Software\Kestrelon)", "kestrelon"},
        {R"(Software\Kestrelon\Cinder\1.0)", "kestrelon/cinder/1.0"},
        {R"(SOFTWARE\kestrelon\CINDER\1.0\)", "kestrelon/cinder/1.0"},
        {R"(Kestrelon\\Cinder)", "kestrelon/cinder"},
        {R"(Kestrelon\Software)", "kestrelon/software"},
        {R"(Kestrelon\..\.\.x)", "kestrelon/%2E./%2E/%2Ex"},
        {R"(Kestrelon\a/b\%2F)", "kestrelon/a%2Fb/%252f"},
        {R"(Kestrelon\settings.conf\settings)", "kestrelon/%73ettings.conf/settings"},
        {"Kestrelon\\\xc3\x89 \n", "kestrelon/\xc3\x89 %0A"},
    };
    for (const Row& row : rows)
        CHECK(SettingsKey{"/r", row.keyPath}.file() == fs::path("/r") / row.file / "settings.conf");
    CHECK(SettingsKey{"/r", "Software\\"}.file().empty());
    CHECK(SettingsKey{"r", "Kestrelon"}.file().empty());
    CHECK(!putInt({"", productKey}, "A", 1));
}

TEST_CASE("SettingsFile: every type is stored, and what is absent or mistyped is the fallback") {
    const TemporaryFolder folder;
    const SettingsKey key{folder / "deep/config", productKey};
    const SettingBytes bytes = {0, 1, 0xff};
    const std::string path = "\\home\\Zo\xc3\xab\\ \x80\n";
    {
        SettingsFileWriter writer(key);
        CHECK(writer.intValue("int", -7, 1) == -7);
        CHECK(writer.boolValue("bool", true, false));
        CHECK(writer.doubleValue("double", 1.0 / 3.0, 1.0) == 1.0 / 3.0);
        CHECK(writer.stringValue("string", path, "x") == path);
        SettingBytes same = bytes;
        writer.binaryValue("bytes", same);
        CHECK(same == bytes);
        writer.stringValue("not a number", "nan", "");
        writer.stringValue("half a number", "1.5x", "");
    }  // stored here
    SettingsFileReader reader(key);
    CHECK(reader.intValue("INT", 0, 1) == -7);
    CHECK(reader.boolValue("bool", false, false));
    CHECK(reader.doubleValue("double", 0.0, 1.0) == 0.333333333333333);
    CHECK(reader.stringValue("string", "", "x") == path);
    SettingBytes value = {9};
    reader.binaryValue("bytes", value);
    CHECK(value == bytes);
    for (const char* name : {"missing", "string", "not a number", "half a number"}) {
        INFO(name);
        CHECK(reader.intValue(name, 0, 5) == 5);
        CHECK(reader.boolValue(name, false, true));
        CHECK(reader.doubleValue(name, 0.0, 2.0 / 3.0) == 2.0 / 3.0);
        value = {9};
        reader.binaryValue(name, value);
        CHECK(value.empty());
    }
    CHECK(reader.stringValue("int", "", "x") == "x");

    // Nobody but the user may look into folders that we made.
    struct stat status {};
    REQUIRE(::stat((folder / "deep").c_str(), &status) == 0);
    CHECK((status.st_mode & 0777) == 0700);
}

TEST_CASE("SettingsFile: the roots are the folders of the environment, where they are absolute") {
    const auto with = [](const char* name, const char* value, auto ask) {
        CHECK(succeeded(inChild([&] {
            return value ? ::setenv(name, value, 1) == 0 && ask() : ::unsetenv(name) == 0 && ask();
        })));
    };
    with("XDG_CONFIG_HOME", "/a/b", [] { return userSettingsRoot() == "/a/b"; });
    for (const char* useless : {"", "a/b", static_cast<const char*>(nullptr)})
        with("XDG_CONFIG_HOME", useless,
             [] { return ::setenv("HOME", "/h", 1) == 0 && userSettingsRoot() == "/h/.config"; });
    with("XDG_CONFIG_DIRS", "/a:b::/c", [] {
        return machineSettingsRoots() == std::vector<fs::path>{"/a", "/c"};
    });
    with("XDG_CONFIG_DIRS", "",
         [] { return machineSettingsRoots() == std::vector<fs::path>{"/etc/xdg"}; });
}

TEST_CASE("SettingsFile: processes that write at the same time lose nothing") {
    const TemporaryFolder folder;
    const SettingsKey key{folder.path, productKey};
    constexpr int numProcesses = 3, numValues = 15;
    pid_t children[numProcesses];
    for (int process = 0; process < numProcesses; ++process)
        children[process] = inChild([&] {
            bool stored = true;
            for (int i = 0; i < numValues; ++i)
                stored &= putInt(key, std::to_string(process) + "." + std::to_string(i), i);
            return stored;
        });
    for (const pid_t child : children)
        CHECK(succeeded(child));
    SettingsFileReader whole(key);
    for (int process = 0; process < numProcesses; ++process)
        for (int i = 0; i < numValues; ++i)
            CHECK(whole.intValue(std::to_string(process) + "." + std::to_string(i), 0, -1) == i);
}

TEST_CASE("SettingsFile: where nothing can be written nothing changes") {
    const TemporaryFolder folder;
    const SettingsKey key{folder / "config", productKey};
    REQUIRE(putInt(key, "A", 1));
    const std::string before = bytesOf(key.file());
    {
        const FileSizeLimit full(before.size() - 1);
        CHECK(!putInt(key, "A", 2));
        CHECK(putInt(key, "A", 1));  // nothing to write
    }
    fs::permissions(folder.path, fs::perms::owner_all | fs::perms::others_exec);
    const auto permitAll = [&](int mode) {
        for (auto at = key.file().parent_path(); at != folder.path; at = at.parent_path())
            fs::permissions(at, static_cast<fs::perms>(mode));
    };
    permitAll(0555);
    CHECK(succeeded(inChild([&] {
        // Rights don't hold root back.
        if (::geteuid() == 0 && ::setuid(65534) != 0) return false;
        return !putInt(key, "A", 2) && !putInt({key.root, "Kestrelon\\New"}, "A", 2);
    })));
    permitAll(0755);
    CHECK(bytesOf(key.file()) == before);
    CHECK(!fs::exists(SettingsKey{key.root, "Kestrelon\\New"}.file().parent_path()));

    putBytes(folder / "file", "");
    CHECK(!putInt({folder / "file", productKey}, "A", 2));
    CHECK(getInt({folder / "file", productKey}, "A", 3) == 3);
}

TEST_CASE("SettingsFile: a file that isn't ours to understand is left alone") {
    const TemporaryFolder folder;
    const SettingsKey key{folder.path, productKey};
    const fs::path file = key.file();
    fs::create_directories(file.parent_path());

    const std::string huge = "A=int:1\n" + std::string(1 << 20, '#');
    putBytes(file, huge);
    CHECK(getInt(key, "A", 5) == 5);
    CHECK(!putInt(key, "A", 2));
    CHECK(bytesOf(file) == huge);
    fs::remove(file);

    REQUIRE(::mkfifo(file.c_str(), 0600) == 0);
    CHECK(getInt(key, "A", 5) == 5);
    CHECK(!putInt(key, "A", 2));
    fs::remove(file);
    fs::create_directory(file);
    CHECK(getInt(key, "A", 5) == 5);
    CHECK(!putInt(key, "A", 2));
    fs::remove(file);

    // Nor do we write what we could not read again.
    REQUIRE(putInt(key, "A", 1));
    SettingsFileWriter writer(key);
    writer.stringValue("B", huge, "");
    CHECK(!writer.commit());
    CHECK(getInt(key, "A") == 1);

    // Some people keep such files elsewhere, with a link in their place.
    fs::rename(file, folder / "elsewhere");
    fs::create_symlink(folder / "elsewhere", file);
    CHECK(putInt(key, "A", 2));
    CHECK(fs::is_symlink(file));
    CHECK(getInt({folder.path, productKey}, "A") == 2);
}

TEST_CASE("SettingsFile: any bytes can be read and written over") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const TemporaryFolder folder;
    const SettingsKey key{folder.path, productKey};
    REQUIRE(putInt(key, "A", 7));
    const std::string whole = bytesOf(key.file());
    for (std::size_t i = 0; i < whole.size(); i += 3) {
        std::string damaged = whole;
        if (i % 2)
            damaged.resize(i);
        else
            damaged[i] = static_cast<char>(rng.integer(0, 255));
        INFO("at " << i);
        putBytes(key.file(), damaged);
        const int value = getInt(key, "A");
        CHECK((value == 7 || damaged.find("A=int:7\n") == damaged.npos));
        CHECK(putInt(key, "A", 8));
        CHECK(getInt(key, "A") == 8);
    }
}

}  // namespace
}  // namespace cinder::test
