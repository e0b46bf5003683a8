#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "state/FourCharacterCode.h"

namespace cinder {

/// The kinds of chunk that a host may hand over or ask for.
enum class ChunkId : std::uint32_t {
    PluginState = fourCharacterCode("KNPs"),  ///< all sections of the state
    PresetName = fourCharacterCode("KNPr"),   ///< PresetNameChunk
    Controls = fourCharacterCode("elck"),     ///< the host's own list of its controls
};

/// What the chunk operations answer with.
enum class ChunkError : std::int32_t {
    None = 0,
    NoSuchIndex = -20006,
    UnknownId = -20007,
    SizeChanged = -20008,  ///< of the controls, between the question for the size and the chunk
    CannotRead = -20026,
    CannotWrite = -20045,
};

/// The name that a chunk bears in its record; empty for an id that isn't one of ours.
std::string_view chunkName(ChunkId id);

/// The record in which a host keeps a chunk. 56 bytes, numbers little-endian, then the data:
///
///     offset   0   4   8             12       16       20    24            56
///     bytes    4   4   4             4        4        4     32            size
///              size version manufacturer product  plug-in  chunk  name, zeros   data
struct ChunkRecord {
    std::int32_t version = 1;
    std::uint32_t manufacturerId = 0;
    std::uint32_t productId = 0;
    std::uint32_t pluginId = 0;
    std::uint32_t chunkId = 0;
    std::string name;  ///< at most 31 bytes; more are cut
    std::string data;

    bool operator==(const ChunkRecord&) const = default;
};

std::string encodeChunk(const ChunkRecord& record);
/// Errors  none: the size is below 0, or fewer bytes follow. More are passed over
std::optional<ChunkRecord> decodeChunk(std::string_view bytes);

/// The data of a chunk that holds the preset's name: 64 bytes of UTF-8, cut or padded with zeros,
/// where a name of 64 bytes or more has no zero at its end; then zeros up to the size that the
/// host is told.
struct PresetNameChunk {
    static constexpr std::size_t nameLength = 64;
    static constexpr std::size_t size = 124;
    /// How much of a name that came from a chunk can be compared with another name.
    static constexpr int comparedLength = 63;

    static std::string write(std::string_view presetName);
    /// 63 bytes at most. Errors  none: the data is shorter than a name
    static std::optional<std::string> read(std::string_view data);
    /// Whether the chunk holds this name: its first 64 bytes up to a zero.
    static bool holds(std::string_view data, std::string_view presetName);
};

}  // namespace cinder
