#include "params/ChoiceNames.h"

#include "params/NumberText.h"

namespace cinder {

void ChoiceNames::setOwn(std::string_view commaSeparated) {
    ownNames.clear();
    names = &ownNames;
    while (!commaSeparated.empty()) {
        const std::size_t length = std::min(commaSeparated.find(','), commaSeparated.size());
        ownNames.emplace_back(commaSeparated.substr(0, length));
        commaSeparated.remove_prefix(std::min(length + 1, commaSeparated.size()));
    }
}

const std::string* ChoiceNames::at(int index) const {
    const bool isThere = index >= 0 && static_cast<std::size_t>(index) < names->size();
    return isThere ? &(*names)[static_cast<std::size_t>(index)] : nullptr;
}

int ChoiceNames::find(std::string_view name) const {
    const auto placeOf = [this](const auto& isMeant) {
        for (std::size_t i = 0; i < names->size(); ++i)
            if (isMeant((*names)[i])) return static_cast<int>(i);
        return -1;
    };
    const int exact = placeOf([&](const std::string& entry) { return entry == name; });
    if (exact >= 0) return exact;
    return placeOf([&](const std::string& entry) { return equalsIgnoringCase(entry, name); });
}

}  // namespace cinder
