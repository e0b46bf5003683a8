#include "plugin/settings/SettingsFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <optional>
#include <system_error>

#include "core/platform/UserFolders.h"
#include "core/platform/WholeFile.h"

namespace cinder {
namespace {

using Path = std::filesystem::path;

constexpr std::string_view fileName = "settings.conf";
constexpr std::string_view lockName = "settings.lock";
constexpr std::string_view ownNames = "settings.";
constexpr std::string_view unfinishedStart = ".settings.conf.";
constexpr std::size_t maxFileBytes = std::size_t{1} << 17;  // a hundred times what we write

/// One name of a key path as a file name: never ".", "..", hidden or one of our own names.
std::string folderName(std::string_view keyName) {
    std::string name = escapeSetting(foldCase(keyName), "/");
    if (name.starts_with('.') || name.starts_with(ownNames))
        name = escapeSetting(name.substr(0, 1), "s.") + name.substr(1);
    return name;
}

std::vector<std::string_view> namesOf(std::string_view keyPath) {
    std::vector<std::string_view> names;
    while (!keyPath.empty()) {
        const std::size_t length = std::min(keyPath.find('\\'), keyPath.size());
        if (length > 0) names.push_back(keyPath.substr(0, length));
        keyPath.remove_prefix(std::min(length + 1, keyPath.size()));
    }
    if (!names.empty() && foldCase(names.front()) == "software") names.erase(names.begin());
    return names;
}

/// Makes the folder and those above it, for nobody but the user.
bool makeFolder(const Path& folder) {
    std::error_code failed;
    if (std::filesystem::is_directory(folder, failed)) return true;
    if (!folder.has_relative_path() || !makeFolder(folder.parent_path())) return false;
    // Another process may have been faster.
    return ::mkdir(folder.c_str(), S_IRWXU) == 0 || std::filesystem::is_directory(folder, failed);
}

/// Keeps all others out, processes and threads, for its own lifetime. The system lets go when the
/// process dies. The lock is not on the settings file, since that one is replaced.
class FileLock {
public:
    explicit FileLock(const Path& path)
        : file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR)) {
        if (file < 0) return;
        while (::flock(file, LOCK_EX) != 0)
            // A file system that knows no locks: to store without is better than not to store.
            if (errno != EINTR) break;
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock() {
        if (file < 0) return;
        // Closing is not enough: a child process of the host may have inherited the file.
        ::flock(file, LOCK_UN);
        ::close(file);
    }
    bool isOpen() const { return file >= 0; }

private:
    int file;
};

/// Takes away what a writer left behind that was killed. Only the holder of the lock may.
void removeUnfinished(const Path& folder) {
    std::error_code failed;
    std::vector<Path> unfinished;
    for (std::filesystem::directory_iterator at(folder, failed), end; !failed && at != end;
         at.increment(failed)) {
        const std::string name = at->path().filename().string();
        if (name.starts_with(unfinishedStart) && name.ends_with(".part"))
            unfinished.push_back(at->path());
    }
    for (const Path& path : unfinished)
        std::filesystem::remove(path, failed);
}

/// The content of the file, nothing where there is no file, none where there is one that can't be
/// read: that one we must not replace.
std::optional<std::string> contentToChange(const Path& file) {
    auto content = platform::readWholeFile(file, maxFileBytes);
    struct stat status {};
    if (!content && ::stat(file.c_str(), &status) != 0 && errno == ENOENT) return "";
    return content;
}

}  // namespace

Path SettingsKey::file() const {
    const std::vector<std::string_view> names = namesOf(keyPath);
    if (!root.is_absolute() || names.empty()) return {};
    Path folder = root;
    for (std::string_view name : names)
        folder /= folderName(name);
    return folder / fileName;
}

Path userSettingsRoot() {
    return platform::configFolder();
}

std::vector<Path> machineSettingsRoots() {
    const char* const configured = std::getenv("XDG_CONFIG_DIRS");
    std::string_view list = configured && *configured ? configured : "/etc/xdg";
    std::vector<Path> roots;
    while (!list.empty()) {
        const std::size_t length = std::min(list.find(':'), list.size());
        const Path root(list.substr(0, length));
        if (root.is_absolute()) roots.push_back(root);
        list.remove_prefix(std::min(length + 1, list.size()));
    }
    return roots;
}

SettingsFileReader::SettingsFileReader(const SettingsKey& key)
    : text(platform::readWholeFile(key.file(), maxFileBytes).value_or("")) {}

template <typename T>
T SettingsFileReader::read(const std::string& name, const T& value, const T& fallback) {
    if (seen && seen->writeFailed && seen->isNews(name, encodeSetting(value))) return value;
    const auto stored = text.find(name);
    T answer = stored ? decodeSetting<T>(*stored).value_or(fallback) : fallback;
    if (seen) seen->note(name, encodeSetting(answer));
    return answer;
}

void SettingsFileReader::binaryValue(const std::string& name, SettingBytes& value) {
    value = read<SettingBytes>(name, value, {});
}

std::int32_t SettingsFileReader::intValue(const std::string& name, std::int32_t value,
                                          std::int32_t fallback) {
    return read(name, value, fallback);
}

std::string SettingsFileReader::stringValue(const std::string& name, const std::string& value,
                                            const std::string& fallback) {
    return read(name, value, fallback);
}

void SettingsFileWriter::binaryValue(const std::string& name, SettingBytes& value) {
    put(name, encodeSetting(value));
}

std::int32_t SettingsFileWriter::intValue(const std::string& name, std::int32_t value,
                                          std::int32_t) {
    put(name, encodeSetting(value));
    return value;
}

std::string SettingsFileWriter::stringValue(const std::string& name, const std::string& value,
                                            const std::string&) {
    put(name, encodeSetting(value));
    return value;
}

void SettingsFileWriter::put(const std::string& name, std::string encoded) {
    const bool isNews = !seen || seen->isNews(name, encoded);
    entries.push_back({name, std::move(encoded), seen, isNews});
}

bool SettingsFileWriter::commit() {
    const bool isStored = entries.empty() || store();
    for (const Entry& entry : entries) {
        if (!entry.seen) continue;
        entry.seen->writeFailed = !isStored;
        if (isStored) entry.seen->note(entry.name, entry.encoded);
    }
    entries.clear();
    return isStored;
}

bool SettingsFileWriter::store() const {
    const Path file = key.file();
    if (file.empty() || !makeFolder(file.parent_path())) return false;
    const FileLock lock(file.parent_path() / lockName);
    if (!lock.isOpen()) return false;
    const auto before = contentToChange(file);
    if (!before) return false;

    SettingsText text(*before);
    for (const Entry& entry : entries) {
        const auto stored = text.find(entry.name);
        if (entry.isNews || !stored || !holdsTypeOf(entry.encoded, *stored))
            text.set(entry.name, entry.encoded);
    }
    const std::string after = text.content();
    if (after == *before) return true;
    if (after.size() > maxFileBytes) return false;
    removeUnfinished(file.parent_path());
    return platform::writeWholeFile(file, after);
}

}  // namespace cinder
