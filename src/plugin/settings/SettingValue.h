#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cinder {

using SettingBytes = std::vector<std::uint8_t>;

/// A value as the settings file has it, its type in front: `int:-3`, `text:C%23`, `bytes:00ff`.
/// Equal values have equal texts.
std::string encodeSetting(std::int32_t value);
std::string encodeSetting(const std::string& value);
std::string encodeSetting(const SettingBytes& value);

/// The value of that type, or none where the text holds another type or is no value at all. An
/// `int` is read to its end and must fit.
template <typename T>
std::optional<T> decodeSetting(std::string_view text);
template <>
std::optional<std::int32_t> decodeSetting(std::string_view text);
template <>
std::optional<std::string> decodeSetting(std::string_view text);
template <>
std::optional<SettingBytes> decodeSetting(std::string_view text);

/// The text in front of the colon, with it; empty where there is none.
std::string_view settingType(std::string_view text);
/// `text` holds a value of the same type as `example`.
bool holdsTypeOf(std::string_view example, std::string_view text);

/// What an editor may put in front of a file in UTF-8. It never counts.
constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

/// Text with `%XX` for every byte that could not stand in a line of UTF-8, for blanks at either
/// end and a byte order mark in front, for `%` and for the bytes in `also`. The backslashes of a
/// path stay readable.
std::string escapeSetting(std::string_view text, std::string_view also = {});
/// The reverse. A `%` without two hexadecimal digits, as a person may type it, stands for itself.
std::string unescapeSetting(std::string_view text);

/// Lower case for A to Z and for nothing else, so that it never depends on a language.
std::string foldCase(std::string_view text);

/// What an object knows of the store: the values that it read or wrote last.
///
/// Two processes share the store, and each writes whole objects. An object that wrote values which
/// it never changed would undo what the other process has set since. So a writer compares with
/// these, and a reader leaves a change alone that could not be written.
class SeenSettings {
public:
    void note(std::string_view name, std::string value) {
        values.insert_or_assign(std::string(name), std::move(value));
    }
    /// The object has changed the value since it was read or written.
    bool isNews(std::string_view name, std::string_view value) const;

    bool writeFailed = false;  ///< what is news here is news because it could not be written

private:
    std::map<std::string, std::string, std::less<>> values;
};

}  // namespace cinder
