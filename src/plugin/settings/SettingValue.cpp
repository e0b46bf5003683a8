#include "plugin/settings/SettingValue.h"

#include "core/Utf8.h"

#include <algorithm>
#include <charconv>

namespace cinder {
namespace {

constexpr std::string_view intType = "int:";
constexpr std::string_view textType = "text:";
constexpr std::string_view bytesType = "bytes:";

constexpr char hexDigits[] = "0123456789ABCDEF";

void appendHex(std::string& out, unsigned char byte) {
    out += hexDigits[byte >> 4];
    out += hexDigits[byte & 15];
}

std::optional<std::uint8_t> byteOfHex(std::string_view digits) {
    std::uint8_t byte = 0;
    if (digits.size() != 2) return {};
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + 2, byte, 16);
    if (error != std::errc() || end != digits.data() + 2) return {};
    return byte;
}

std::optional<std::string_view> payload(std::string_view text, std::string_view type) {
    if (!text.starts_with(type)) return {};
    text.remove_prefix(type.size());
    // A blank that belongs to the value is written as %20; this one a person has typed.
    return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
}

}  // namespace

std::string encodeSetting(std::int32_t value) {
    return std::string(intType) + std::to_string(value);
}

std::string encodeSetting(const std::string& value) {
    return std::string(textType) + escapeSetting(value);
}

std::string encodeSetting(const SettingBytes& value) {
    std::string text(bytesType);
    for (std::uint8_t byte : value)
        appendHex(text, byte);
    return text;
}

template <>
std::optional<std::int32_t> decodeSetting(std::string_view text) {
    const auto digits = payload(text, intType);
    if (!digits) return {};
    std::int32_t value = 0;
    const char* const last = digits->data() + digits->size();
    const auto [end, error] = std::from_chars(digits->data(), last, value);
    if (error != std::errc() || end != last) return {};
    return value;
}

template <>
std::optional<std::string> decodeSetting(std::string_view text) {
    const auto escaped = payload(text, textType);
    if (!escaped) return {};
    return unescapeSetting(*escaped);
}

template <>
std::optional<SettingBytes> decodeSetting(std::string_view text) {
    const auto digits = payload(text, bytesType);
    if (!digits || digits->size() % 2 != 0) return {};
    SettingBytes bytes;
    bytes.reserve(digits->size() / 2);
    for (std::size_t i = 0; i < digits->size(); i += 2) {
        const auto byte = byteOfHex(digits->substr(i, 2));
        if (!byte) return {};
        bytes.push_back(*byte);
    }
    return bytes;
}

std::string_view settingType(std::string_view text) {
    return text.substr(0, text.find(':') + 1);
}

bool holdsTypeOf(std::string_view example, std::string_view text) {
    const std::string_view type = settingType(example);
    if (settingType(text) != type) return false;
    if (type == intType) return decodeSetting<std::int32_t>(text).has_value();
    if (type == bytesType) return decodeSetting<SettingBytes>(text).has_value();
    return type == textType;
}

std::string escapeSetting(std::string_view text, std::string_view also) {
    std::string escaped;
    for (std::size_t at = 0; at < text.size();) {
        const auto byte = static_cast<unsigned char>(text[at]);
        const std::size_t length = utf8Length(text.substr(at));
        const bool isOuterBlank = byte == ' ' && (at == 0 || at + 1 == text.size());
        const bool isFirstMark = at == 0 && text.starts_with(byteOrderMark);
        const bool isPlain = length > 0 && byte >= 0x20 && byte != 0x7f && byte != '%' &&
                             !isOuterBlank && !isFirstMark &&
                             also.find(text[at]) == std::string_view::npos;
        if (isPlain) {
            escaped += text.substr(at, length);
            at += length;
        } else {
            escaped += '%';
            appendHex(escaped, byte);
            ++at;
        }
    }
    return escaped;
}

std::string unescapeSetting(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte =
            text[at] == '%' ? byteOfHex(text.substr(at + 1, 2)) : std::optional<std::uint8_t>();
        plain += byte ? static_cast<char>(*byte) : text[at];
        if (byte) at += 2;
    }
    return plain;
}

std::string foldCase(std::string_view text) {
    std::string folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return folded;
}

bool SeenSettings::isNews(std::string_view name, std::string_view value) const {
    const auto seen = values.find(name);
    return seen == values.end() || seen->second != value;
}

}  // namespace cinder
