#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cinder {

class AbstractPluginParameter;
class GenericParameterOwner;

/// What a preset file covers. Nothing here is owned.
struct ParameterCollection {
    GenericParameterOwner* owner = nullptr;
    std::vector<AbstractPluginParameter*> parameters;  ///< in the order of the file
    std::string magic;  ///< empty until the first use, which fills in the product's code

    const std::string& filledMagic(std::string_view productCode) {
        if (magic.empty()) magic = productCode;
        return magic;
    }
};

}  // namespace cinder
