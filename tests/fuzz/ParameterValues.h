#pragma once

#include <vector>

#include "support/ParameterValues.h"

namespace cinder::test {

void setAllToDefault(GenericParameterOwner& owner);
/// Something that neither a file's zeros nor, mostly, the defaults would be.
void setAllToMaximum(GenericParameterOwner& owner);

/// Equal as far as parameters go: one that is set to nearly what it has stays, so that the same
/// file leaves the smallest differences in owners that had different values before.
bool agree(const std::vector<float>& one, const std::vector<float>& other);

}  // namespace cinder::test
