#pragma once

#include <span>
#include <string_view>

namespace cinder::test {

/// A reader of bytes that come from outside, with what must hold whatever they are: no crash, and
/// never more changed than the reader's documentation says. Its checks are those of any test.
struct FuzzTarget {
    std::string_view name;  ///< also of its folder in corpus/
    void (*run)(std::string_view bytes);
};

std::span<const FuzzTarget> fuzzTargets();

/// Where the system has a place for files in memory and nobody wants another one, takes it for
/// temporary folders: thousands of them, each with a few files, have a disk wait for minutes.
void keepFilesInMemory();

void fuzzArchive(std::string_view bytes);
void fuzzControllerMap(std::string_view bytes);
void fuzzPreset(std::string_view bytes);
void fuzzPresetMap(std::string_view bytes);
void fuzzPresetText(std::string_view bytes);
void fuzzSettings(std::string_view bytes);
void fuzzState(std::string_view bytes);

}  // namespace cinder::test
