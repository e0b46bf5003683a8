#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace cinder {

class BinaryDataReader;
class GenericParameterOwner;

/// Where the values of a preset file go, and which versions of it are taken. One lives for one
/// load.
class PresetLoader {
public:
    PresetLoader(GenericParameterOwner* owner, std::string magic)
        : owner(owner), expectedMagic(std::move(magic)) {}
    virtual ~PresetLoader() = default;
    PresetLoader(const PresetLoader&) = delete;
    PresetLoader& operator=(const PresetLoader&) = delete;

    /// Behind the last value.
    virtual void finish(std::int32_t version) { static_cast<void>(version); }
    virtual int entryCount() const = 0;
    virtual const std::string& magic() const { return expectedMagic; }
    /// Before the first value.
    virtual void prepare(std::int32_t version) = 0;
    /// May a file of that version be read? If so, the entries are its own from here on.
    virtual bool acceptsVersion(std::int32_t version) = 0;
    /// The file has no value for the entry.
    virtual void resetEntry(int index) = 0;
    virtual void setEntry(int index, float value) = 0;

    GenericParameterOwner* getOwner() const { return owner; }

private:
    GenericParameterOwner* const owner;
    const std::string expectedMagic;
};

/// Any version: the caller of `load` lets the loader decide.
inline constexpr std::int32_t anyVersion = -1;

/// Reads a preset into the loader, in one update bracket. A file with fewer values resets the
/// other entries, of one with more the rest is not read.
/// Errors  false, and nothing changed: another magic or version, a count that can't be read or is
///         below 0. False, and all entries are set: the file ends within its values; those that
///         it lacks are set to 0
/// [ui]
bool load(PresetLoader& loader, BinaryDataReader& reader, std::int32_t requiredVersion,
          std::string_view magicOverride = {});

}  // namespace cinder
