#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cinder {

/// The names of a stepped parameter's positions: its own, or a list that several share.
class ChoiceNames {
public:
    ChoiceNames() = default;
    ChoiceNames(const ChoiceNames&) = delete;
    ChoiceNames& operator=(const ChoiceNames&) = delete;

    /// "Off,On": names of its own, with commas between.
    void setOwn(std::string_view commaSeparated);
    /// Not owned. It may get its names later; an empty list means that there are none.
    void share(const std::vector<std::string>* list) { names = list; }

    bool empty() const { return names->empty(); }
    /// Null behind the end.
    const std::string* at(int index) const;
    /// The place of a name, first as it is written, then whatever its case; or -1.
    int find(std::string_view name) const;
    const std::vector<std::string>& list() const { return *names; }

private:
    std::vector<std::string> ownNames;
    const std::vector<std::string>* names = &ownNames;
};

}  // namespace cinder
