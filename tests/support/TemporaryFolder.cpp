#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>
#include <signal.h>
#include <stdlib.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>

namespace cinder::test {

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "cinder-test-XXXXXX").string();
    REQUIRE(::mkdtemp(name.data()) != nullptr);
    path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

std::vector<std::string> TemporaryFolder::names() const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(path))
        found.push_back(entry.path().filename().string());
    std::sort(found.begin(), found.end());
    return found;
}

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void putBytes(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary);
    out << bytes;
    REQUIRE(out.flush());
}

FileSizeLimit::FileSizeLimit(rlim_t bytes) : handlerBefore(::signal(SIGXFSZ, SIG_IGN)) {
    REQUIRE(::getrlimit(RLIMIT_FSIZE, &before) == 0);
    const rlimit limit{bytes, before.rlim_max};
    REQUIRE(::setrlimit(RLIMIT_FSIZE, &limit) == 0);
}

FileSizeLimit::~FileSizeLimit() {
    CHECK(::setrlimit(RLIMIT_FSIZE, &before) == 0);
    ::signal(SIGXFSZ, handlerBefore);
}

}  // namespace cinder::test
