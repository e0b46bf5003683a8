#include "state/BinaryFile.h"

#include <optional>
#include <string>
#include <system_error>

#include "core/platform/WholeFile.h"

namespace cinder {

BinaryFileReader::BinaryFileReader(const std::filesystem::path& path) : BinaryDataReader(owned) {
    std::error_code failed;
    if (std::filesystem::is_regular_file(path, failed))
        owned.open(path, std::ios::in | std::ios::binary);
    else
        owned.setstate(std::ios::failbit);
}

BinaryFileWriter::BinaryFileWriter(const std::filesystem::path& path)
    : BinaryDataWriter(owned), path(path) {
    std::error_code failed;
    const auto status = std::filesystem::status(path, failed);
    if (status.type() == std::filesystem::file_type::not_found) return;
    if (const auto content = platform::readWholeFile(path))
        owned.str(*content);
    else
        owned.setstate(std::ios::failbit);
}

bool BinaryFileWriter::commit() {
    return isGood() && platform::writeWholeFile(path, owned.view());
}

BinaryResourceReader::BinaryResourceReader(std::string_view bytes)
    : OwnedFirst<MemoryStream>(bytes), BinaryDataReader(owned) {}

}  // namespace cinder
