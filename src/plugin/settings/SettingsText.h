#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cinder {

/// The content of a settings file, one value a line:
///
///     # a remark
///     RetinaEnabled=int:150
///     PresetFolder=text:\home\anna\Sounds
///
/// Names are the same in any case (A to Z), and of two lines with the same name the later one
/// counts, so a line that a person adds at the end always works. Blanks around the parts, a
/// carriage return and a byte order mark do no harm.
/// State   lines that say nothing we know (remarks, values of a later version, damage) are kept
///         as they are and where they are: we don't throw away what we haven't written
class SettingsText {
public:
    SettingsText() = default;
    explicit SettingsText(std::string_view content);

    /// The encoded value, such as `int:150`.
    std::optional<std::string_view> find(std::string_view name) const;
    /// Puts the value in the place of the old one, or at the end.
    void set(std::string_view name, std::string_view encoded);
    std::string content() const;

private:
    struct Line {
        std::string whole;
        std::optional<std::string> foldedName;  // none where the line holds no value
        std::string value;
    };
    static Line lineOf(std::string_view whole);

    std::vector<Line> lines;
};

}  // namespace cinder
